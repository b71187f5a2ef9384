#include <algorithm>
#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

namespace {

using Notifications = std::vector<UserNotification>;

UserNotificationCenter& requireCenter(const Platform& platform) {
  if (platform.notifications == nullptr) couldNot(translated("There are no notifications here."));
  return *platform.notifications;
}

Json listJson(const Platform& platform, const Notifications& notifications) {
  Json list = Json::array();
  for (const UserNotification& notification : notifications) {
    const auto* bid = notification.userInfo.get<std::string>(key::Bid);
    list.push_back({{"id", notification.identifier},
                    {"bill", bid == nullptr ? Json(nullptr) : Json(*bid)},
                    {"title", notification.title},
                    {"text", notification.informativeText},
                    {"at", isoMinute(platform, notification.deliveryDate)}});
  }
  return list;
}

void addSection(const Platform& platform, Table& table, const char* title, Notifications notifications) {
  std::stable_sort(notifications.begin(), notifications.end(),
                   [](const auto& a, const auto& b) { return a.deliveryDate < b.deliveryDate; });
  table.startSection(title);
  for (const UserNotification& notification : notifications) {
    table.add({timeCell(platform, notification.deliveryDate), notification.title, notification.informativeText,
               notification.identifier});
  }
}

void showNotifications(Session& session) {
  UserNotificationCenter& center = requireCenter(session.platform);
  const Notifications scheduled = center.scheduled();
  const Notifications delivered = center.delivered();
  if (session.json) {
    return printJson(session.console, {{"scheduled", listJson(session.platform, scheduled)},
                                       {"delivered", listJson(session.platform, delivered)}});
  }
  if (scheduled.empty() && delivered.empty()) {
    if (session.console.interactive())
      session.console.line(translated("No notification is scheduled, and none was delivered."));
    return;
  }
  Table table({{marked("When"), false, 0, 0},
               {marked("Notification"), false, 16, 0},
               {marked("Text"), false, 12, 2},
               {marked("Id"), false, 0, 1}});
  addSection(session.platform, table, marked("Scheduled"), scheduled);
  addSection(session.platform, table, marked("Delivered"), delivered);
  table.print(session.console);
}

/// Those that the text means: the one with that identifier, or all of the bill that it names.
void addMeant(const Platform& platform, const Notifications& all, const std::string& text, Notifications& meant) {
  const auto addThose = [&](const auto& condition) {
    const auto before = meant.size();
    std::copy_if(all.begin(), all.end(), std::back_inserter(meant), condition);
    return meant.size() > before;
  };
  const auto isIt = [&](const UserNotification& notification) { return notification.identifier == text; };
  const auto names = [](const std::string& bid) {
    return [bid](const UserNotification& notification) {
      return notification.userInfo.valueOr(key::Bid, std::string()) == bid;
    };
  };
  // A notification may outlive the bill that its own identifier still names.
  if (addThose(isIt) || addThose(names(text))) return;
  const ListedBill bill = findBill(platform, text, {activeBills, archivedBills, deletedBills});
  (void)addThose(names(bill.content.valueOr(key::Bid, bill.bid)));
}

/// The identifiers that are in the list once and for all: a bill may have been named twice.
void removeOnce(Notifications& meant) {
  std::vector<std::string> seen;
  std::erase_if(meant, [&](const UserNotification& notification) {
    const bool isKnown = std::find(seen.begin(), seen.end(), notification.identifier) != seen.end();
    seen.push_back(notification.identifier);
    return isKnown;
  });
}

void removeNotifications(Session& session, const std::vector<std::string>& texts) {
  UserNotificationCenter& center = requireCenter(session.platform);
  Notifications meant;
  session.write([&] {
    Notifications all = center.delivered();
    const Notifications scheduled = center.scheduled();
    all.insert(all.end(), scheduled.begin(), scheduled.end());
    for (const std::string& text : texts) addMeant(session.platform, all, text, meant);
    removeOnce(meant);
    const Result<> removed = center.changeTogether([&] {
      for (const UserNotification& notification : meant) {
        (void)center.removeDelivered(notification);
        (void)center.removeScheduled(notification);
      }
    });
    if (!removed) couldNot(sentence("No notification was removed: {}.", removed.error()));
  });
  if (session.json) return printJson(session.console, listJson(session.platform, meant));
  session.console.line(meant.empty() ? translated("There was none to remove.")
                                     : countedSentence(meant.size(), "Removed {} notification.",
                                                       "Removed {} notifications.", meant.size()));
}

}  // namespace

void addNotifications(CLI::App& app, Invocation& invocation) {
  CLI::App* notifications =
      addCommand(app, invocation,
                 {"notifications", marked("List the desktop notifications that are scheduled and that were delivered"),
                  "tallyvane notifications"},
                 nullptr);
  notifications->require_subcommand(0, 1);
  notifications->callback([&invocation, notifications] {
    if (notifications->get_subcommands().empty()) invocation.action = showNotifications;
  });
  const auto texts = std::make_shared<std::vector<std::string>>();
  CLI::App* remove =
      addCommand(*notifications, invocation,
                 {"remove",
                  marked("Remove notifications; a bill that asks for reminders has its own again when they are "
                         "next placed"),
                  "tallyvane notifications remove Rent"},
                 [texts](Session& session) { removeNotifications(session, *texts); });
  remove->add_option("BILL|ID", *texts, "A bill, for all of its notifications, or the identifier of one")
      ->required()
      ->expected(1, -1);
}

}  // namespace tallyvane::cli
