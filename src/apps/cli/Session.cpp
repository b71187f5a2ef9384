#include "cli/Session.h"

#include "cli/Failure.h"
#include "cli/terminal/Progress.h"
#include "common/DailyBackup.h"
#include "common/Sentences.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

void Session::write(const std::function<void()>& operation, const std::function<void()>& mend) {
  const auto lock = access_.lock();
  if (!lock) couldNot(sentence("Nothing was changed: {}.", lock.error()));

  access_.files.begin();
  try {
    tellingOfCopies(operation);
  } catch (const std::exception&) {
    putBack(mend);
    throw;
  }
  const Result<> written = access_.files.finish();
  if (!written) mendWith(mend);
  (void)QMBillsLoader{platform}.loadBills();  // for the widget's snapshot
  if (!written)
    couldNot(sentence("Not done: {}.", written.error()) + " " +
             translated("Make room or check the permissions, then try again."));
}

void Session::list(const std::function<void()>& listing) {
  const auto lock = access_.lock();
  listing();
}

void Session::converse(const std::function<void()>& operation, const std::function<bool()>& finished) {
  requests_.holdSignals();
  try {
    write(operation);
    while (!finished()) write(requests_.waitForCallbacks() ? requests_.runCallbacks : requests_.endRequests);
  } catch (...) {
    if (finished()) throw;
    const auto lock = access_.lock();
    requests_.endRequests();
    throw;
  }
}

std::shared_ptr<const void> Session::takeMailTurn() {
  auto turn = requests_.mailTurn();
  if (!turn) couldNot(sentence("No mail is sent: {}.", turn.error()));
  return *turn;
}

/// A whole folder may take a while.
void Session::tellingOfCopies(const std::function<void()>& operation) {
  Progress progress(console);
  access_.files.tellCopied(
      [&](std::uint64_t bytes) { progress.show([&] { return sentence("{} copied", programs::sizeText(bytes)); }); });
  const std::shared_ptr<void> untold(nullptr, [&](void*) { access_.files.tellCopied(nullptr); });
  operation();
}

void Session::putBack(const std::function<void()>& mend) {
  const bool hasChanged = access_.files.hasChanged();
  if (const Result<> abandoned = access_.files.abandon(); !abandoned) console.error(abandoned.error() + ".");
  if (hasChanged) mendWith(mend);
}

/// Why it was needed matters more than what may go wrong with it.
void Session::mendWith(const std::function<void()>& mend) {
  if (!mend) return;
  try {
    mend();
  } catch (const std::exception& error) {
    console.error(error.what());
  }
}

}  // namespace tallyvane::cli
