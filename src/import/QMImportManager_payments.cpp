#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "foundation/NumberReading.h"
#include "foundation/Paths.h"
#include "foundation/Texts.h"
#include "import/QMImportManager.h"
#include "payments/QMPaymentLogger.h"
#include "storage/Keys.h"

namespace tallyvane {

namespace {

/// 2004-01-01 01:00:00 +0600, for payments without a date that can be read.
constexpr Date unknownDate = std::chrono::sys_days{std::chrono::year{2003} / 12 / 31} + std::chrono::hours{19};

const Value* elementOf(const Array* list, std::size_t index) {
  return list == nullptr || index >= list->size() ? nullptr : &(*list)[index];
}

/// Not guarded as the others are: a list that is there must be long enough.
const Value* requiredElement(const Array* list, std::size_t index) {
  if (list != nullptr && index >= list->size())
    throw std::out_of_range("an old bill has fewer notes or attachments than payments");
  return list == nullptr ? nullptr : &(*list)[index];
}

/// An amount that was typed reads as a number of the user's locale; one with a currency's sign is none.
Value amountOf(const Region& region, const Value& stored) {
  const auto* text = stored.get<std::string>();
  if (text == nullptr) return stored;
  const std::optional<double> amount = parsedNumber(region, *text);
  return amount ? Value(*amount) : Value(0);
}

Value dateOf(const Array* dates, std::size_t index) {
  const Value* date = elementOf(dates, index);
  return date == nullptr || date->is<std::string>() ? Value(unknownDate) : *date;
}

/// A folder of receipts lies inside the folder of them all: no name leads elsewhere.
bool leadsInside(std::string_view name) {
  for (const auto& part : std::filesystem::path(name)) {
    if (part.empty() || part == "." || part == ".." || part == "/") return false;
  }
  return !name.empty();
}

}  // namespace

Value QMImportManager::calculateTotalPaidWithPayments(const Array* payments) const {
  float total = 0;
  for (const Value& payment : payments == nullptr ? Array() : *payments) total += floatValue(&payment);
  return total;
}

Array QMImportManager::createListOfPaymentsForDictionaryAtPath(const Dictionary& record, const std::string& dataPath) {
  const Array* amounts = record.get<Array>("Pay_Amounts");
  const Array* attachments = record.get<Array>("Pay_Attachment");
  const Array* dates = record.get<Array>("Pay_Dates");
  const Array* notes = record.get<Array>("Pay_Notes");
  const std::size_t count = amounts == nullptr ? 0 : amounts->size();
  platform_.log.line(fmt::format("Count: {}", count));

  Array list;
  for (std::size_t i = 0; i < count; ++i) {
    const Value date = dateOf(dates, i);
    const Value* attachment = requiredElement(attachments, i);
    const Value* note = requiredElement(notes, i);
    Dictionary soFar;
    if (!list.empty()) soFar.set(key::PaymentList, std::move(list));
    list = QMPaymentLogger{platform_}.addNewRecordToPaymentListInBill(
        {amountOf(platform_.region, (*amounts)[i]), date, note == nullptr ? Value("") : *note,
         receiptOf(attachment, dataPath)},
        soFar);
  }
  return list;
}

// The old version stored the button's title where there was no receipt.
std::string QMImportManager::receiptOf(const Value* attachment, const std::string& dataPath) {
  const auto* name = attachment == nullptr ? nullptr : attachment->get<std::string>();
  if (name == nullptr || containsIgnoringCase(*name, "Attach")) return "";
  const std::string folder = joined(parentOf(withoutTrailingSlashes(dataPath)), "receipts/" + *name);
  Result<std::vector<std::string>> files =
      leadsInside(*name) ? platform_.files.list(folder) : Result<std::vector<std::string>>(Error{});
  if (!files) return *name;
  // Hidden files, such as what a desktop keeps about a folder, come last.
  std::stable_partition(files->begin(), files->end(), [](const std::string& file) { return !file.starts_with('.'); });
  platform_.log.line(fmt::format("Files found: ({})", fmt::join(*files, ", ")));
  return files->empty() ? "" : QMPaymentLogger{platform_}.copyAttachment(folder + "/" + files->front());
}

}  // namespace tallyvane
