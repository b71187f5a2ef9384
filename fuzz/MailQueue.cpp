// Whatever the file holds, each pending message is offered once, and one that was not sent waits again.
#include <algorithm>

#include "Fuzzed.h"
#include "foundation/PropertyList.h"
#include "reminders/QMEmailManager.h"
#include "support/Fakes.h"

namespace tallyvane::fuzz {

namespace {

/// Checks the queue; how many messages went out.
std::size_t checkQueue(testing::FakeDesktop& desktop, const HttpOutcome& outcome) {
  desktop.http.outcome = outcome;
  desktop.http.sent.clear();
  QMEmailManager manager{desktop.platform};
  manager.checkForMessagesToSendAsynchronous(true);
  desktop.workQueue.run();
  desktop.mainQueue.run();
  require(manager.messagesOnTheirWay().empty(), "a message has no outcome");
  for (const std::string& body : desktop.http.sent) {
    require(body.starts_with("username=") && body.find("&time_offset_minutes=") != std::string::npos, "sent: " + body);
    require(std::count(body.begin(), body.end(), '&') == 6, "a message breaks out of its field: " + body);
  }
  return desktop.http.sent.size();
}

}  // namespace

void mailQueue(std::string_view bytes) {
  testing::FakeDesktop desktop;
  desktop.defaults.content.set("LEMAddress", "ada@example.org");
  const QMEmailManager manager{desktop.platform};
  const std::string path = manager.getMailPath();
  (void)desktop.files.createFolder(testing::InMemoryFileStore::parent(path));
  desktop.files.content[path] = bytes;
  const bool isQueue = manager.getMailIndex().has_value();
  const std::size_t pending = manager.getPendingMessages().size();

  const std::size_t tried = checkQueue(desktop, HttpFailure{HttpFailure::Kind::timedOut, "silence"});
  require(tried <= pending, "a message was offered twice");
  const std::vector<std::string> waiting = manager.getPendingMessages();
  require(waiting.size() <= tried, "a message waits that was not tried");
  for (const std::string& title : waiting) require(manager.dictionaryForBill(title).has_value(), "lost: " + title);

  const std::size_t sent = checkQueue(desktop, HttpAnswer{200, {}, "sent"});
  require(sent == waiting.size(), "a message that waited was not sent");
  require(manager.getPendingMessages().empty(), "a message that was sent waits");
  require(isQueue || desktop.files.content[path] == bytes, "a file that is no queue was replaced");
}

}  // namespace tallyvane::fuzz
