// Saving a bill, against durable replacement of the same files.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "Household.h"
#include "Ratio.h"
#include "payments/QMPaymentLogger.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::bench {
namespace {

struct Content {
  std::string path;
  std::string bytes;
};

Content contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {path, {std::istreambuf_iterator<char>(file), {}}};
}

/// Temporary, fsync, rename, fsync of the folder: the least that replacing a file for good takes.
void replaceDurably(const std::string& folder, const std::string& path, const std::string& bytes) {
  const std::string temporary = folder + "/floor.tmp";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  const bool wrote = ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  const bool synced = ::fsync(file) == 0;
  ::close(file);
  const int directory = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const bool renamed = ::rename(temporary.c_str(), path.c_str()) == 0 && ::fsync(directory) == 0;
  ::close(directory);
  if (!wrote || !synced || !renamed) throw std::runtime_error("cannot replace " + path);
}

QMBill billOf(const Platform& platform, const Dictionary& stored) {
  QMBill bill{platform};
  const auto value = [&](std::string_view key) { return *stored.find(key); };
  bill.name = stored.valueOr("Name", std::string());
  bill.bid = stored.valueOr("Bid", std::string());
  bill.icon = stored.valueOr("Icon", std::string());
  bill.dueDate = stored.valueOr("DueDate", Date());
  bill.repeat = stored.valueOr("Repeat", Array());
  bill.average = value("Average");
  bill.lastPayment = stored.valueOr("LastPayment", Date());
  bill.totalPaid = value("TotalPaid");
  bill.remindMe = value("RemindMe");
  bill.paySite = stored.valueOr("PaySite", std::string());
  bill.paymentList = stored.valueOr("PaymentList", Array());
  bill.reminderDays = value("ReminderDays");
  bill.balance = value("Balance");
  bill.interest = value("Interest");
  bill.notes = stored.valueOr("Notes", std::string());
  bill.tags = stored.valueOr("Tags", Array());
  bill.amount = value("Amount");
  bill.payType = value("PayType");
  bill.rev = value("Rev");
  return bill;
}

/// An edit of a bill that is in the index: every turn changes its amount to the other of two.
void writeBill(benchmark::State& state) {
  const auto bills = static_cast<std::size_t>(state.range(0));
  Household& household = Household::of(bills);
  Desktop desktop(household.folder());
  QMBill bill = billOf(desktop.platform, household.bill(bills / 2));
  const std::array<double, 2> amounts{100.25, 200.25};
  std::array<std::vector<Content>, 2> contents;
  for (std::size_t i = 0; i < amounts.size(); ++i) {
    bill.amount = Value(amounts[i]);
    bill.writeBill(false);
    for (const std::string& path : {household.billFiles()[bills / 2], household.indexFile(), household.tagFile()})
      contents[i].push_back(contentOf(path));
  }
  const std::string folder = household.folder() + "/Tallyvane/Tallyvane.tvdata";

  std::size_t turn = 0;
  compareWithFloor(
      state, Work::elsewhere, bills <= 1000 ? 1.3 : 3,
      [&] {
        const std::vector<Content>& same = contents[++turn % 2];
        for (const Content& content : same) replaceDurably(folder, content.path, content.bytes);
        return same.size();
      },
      [&] {
        desktop.files.savedPaths.clear();
        bill.amount = Value(amounts[(turn + 1) % 2]);
        bill.writeBill(false);
        return desktop.files.savedPaths.size();
      });
  state.counters["files_saved"] = static_cast<double>(desktop.files.savedPaths.size());
  for (const Content& content : contents[(turn + 1) % 2]) {
    if (contentOf(content.path).bytes != content.bytes)
      state.SkipWithError("floor and operation saved different bytes");
  }
}
BENCHMARK(writeBill)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(1000)->Arg(10000)->Iterations(200);

/// Records a payment of the stored bill, always on top of the same list.
std::size_t recordPayment(const Platform& platform, const std::string& bid, const Array& payments) {
  Dictionary bill = QMBillsLoader{platform}.loadBillWithID(bid).value_or(Dictionary());
  bill.set("PaymentList", payments);
  QMPaymentLogger{platform}.recordPaymentForBill({Value(12.5), FixedClock::today, "", ""}, bill);
  return bill.size();
}

/// The same bill in a folder of 10,000, against a folder of 10.
void recordPayment(benchmark::State& state) {
  Household& large = Household::of(10000);
  const Household small(10);
  const Dictionary bill = large.bill(5000);
  const auto bid = bill.valueOr("Bid", std::string());
  const auto payments = bill.valueOr("PaymentList", Array());
  Desktop many(large.folder());
  Desktop few(small.folder());
  QMBill{few.platform}.rewriteSpecificBill(bill);
  compareWithFloor(
      state, Work::elsewhere, 1.1, [&] { return recordPayment(few.platform, bid, payments); },
      [&] { return recordPayment(many.platform, bid, payments); });
}
BENCHMARK(recordPayment)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(300);

/// How many files of the data folder are saved; the bound is on that number.
void rewriteSpecificBill(benchmark::State& state) {
  Household& household = Household::of(1000);
  Desktop desktop(household.folder());
  const Dictionary bill = household.bill(500);
  for ([[maybe_unused]] auto turn : state) {
    desktop.files.readPaths.clear();
    desktop.files.savedPaths.clear();
    QMBill{desktop.platform}.rewriteSpecificBill(bill);
  }
  state.counters["files_saved"] = static_cast<double>(desktop.files.savedPaths.size());
  state.counters["files_read"] = static_cast<double>(desktop.files.readPaths.size());
  state.counters["bound"] = 1;
}
BENCHMARK(rewriteSpecificBill)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tallyvane::bench
