#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/settings/SettingValue.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Table.h"
#include "common/MailRound.h"
#include "common/Sentences.h"
#include "reminders/QMEmailManager.h"
#include "reminders/QMReminderManager.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

namespace {

constexpr int firstErrorStatus = 400;

using Outcomes = std::vector<MailOutcome>;

bool wasTaken(const MailOutcome& outcome) { return outcome.failure.empty() && outcome.status < firstErrorStatus; }

std::string textOf(const MailOutcome& outcome) {
  // translators: what became of a message, behind its title
  if (!outcome.failure.empty()) return sentence("not sent: {}", outcome.failure);
  const std::string answer =
      fmt::format("{}{}", outcome.status, outcome.answerText.empty() ? "" : ": " + outcome.answerText);
  return wasTaken(outcome) ? sentence("sent; the service answered {}", answer)
                           : sentence("refused; the service answered {}", answer);
}

void printOutcomes(Session& session, const Outcomes& outcomes) {
  Json list = Json::array();
  for (const MailOutcome& outcome : outcomes) {
    if (!session.json) {
      session.console.line(printable(outcome.billTitle + ": " + textOf(outcome)));
      continue;
    }
    list.push_back({{"title", outcome.billTitle},
                    {"sent", wasTaken(outcome)},
                    {"status", outcome.status == 0 ? Json(nullptr) : Json(outcome.status)},
                    {"answer", outcome.answerText},
                    {"failure", outcome.failure}});
  }
  if (session.json) return printJson(session.console, list);
  if (outcomes.empty()) session.console.line(translated("No message was due to be sent."));
}

void requireTaken(const Outcomes& outcomes) {
  const auto refused = std::count_if(outcomes.begin(), outcomes.end(), [](const auto& o) { return !wasTaken(o); });
  if (refused == 0) return;
  const bool anyWaits = std::any_of(outcomes.begin(), outcomes.end(), [](const auto& o) { return !o.failure.empty(); });
  couldNot(countedSentence(outcomes.size(), "{} of {} message did not get through.",
                           "{} of {} messages did not get through.", refused, outcomes.size()) +
           (anyWaits ? " " + translated("What was not sent waits in the queue.") : ""));
}

/// Runs what sends messages, waits until each has its outcome, and shows them. `told` is called at each.
void send(Session& session, const std::function<void(QMEmailManager&)>& operation,
          const std::function<void(const QMEmailManager&)>& told) {
  Outcomes outcomes;
  QMEmailManager manager{session.platform};
  manager.observer = [&](const MailOutcome& outcome) {
    outcomes.push_back(outcome);
    told(manager);
  };
  session.converse([&] { operation(manager); }, [&] { return manager.messagesOnTheirWay().empty(); });
  printOutcomes(session, outcomes);
  requireTaken(outcomes);
}

void requireNothingMissing(const std::optional<std::string>& hindrance) {
  if (hindrance)
    couldNot(sentence("No mail is sent: {}.", translated(*hindrance)) + " " +
             sentence("See: {}", "tallyvane mail --help"));
}

void setRecipient(Session& session, const std::string& address) {
  const Value value = settingInput(session.platform, findSetting(std::string(key::LEMAddress)), address);
  session.write([&] {
    const Result<> stored = session.platform.defaults.set(key::LEMAddress, value);
    if (!stored) couldNot(sentence("The address was not changed: {}.", stored.error()));
  });
}

void checkQueue(Session& session) {
  requireReadableData(session.platform);
  requireNothingMissing(programs::mailHindrance(session.platform));
  const auto turn = session.takeMailTurn();
  programs::MailRoundNotes notes(session.platform, session.mailRound());
  session.write([&] { notes.prepareMailQueue(); });
  send(
      session, [](QMEmailManager& manager) { manager.checkForMessagesToSendAsynchronous(true); },
      [&](const QMEmailManager& manager) { (void)notes.note(manager.messagesOnTheirWay()); });
}

void sendTest(Session& session) {
  requireNothingMissing(QMEmailManager{session.platform}.hindrance());
  send(
      session, [](QMEmailManager& manager) { manager.sendTestMessage(); }, [](const QMEmailManager&) {});
}

Json messageJson(const Platform& platform, const std::string& title, const Dictionary& message) {
  const auto day = [&](std::string_view name) {
    const Date* date = message.get<Date>(name);
    return date == nullptr ? Json(nullptr) : Json(isoDay(platform, *date));
  };
  return {{"title", title},
          {"subject", message.valueOr(key::mailSubject, std::string())},
          {"dueDate", day(key::mailDueDate)},
          {"reminderDate", day(key::mailAlarmDate)}};
}

std::string dayText(const Platform& platform, const Dictionary& message, std::string_view name) {
  const Date* date = message.get<Date>(name);
  return date == nullptr ? std::string() : isoDay(platform, *date);
}

void showQueue(Session& session) {
  (void)requireDataFolder(session.platform);
  const QMEmailManager manager{session.platform};
  const std::vector<std::string> titles = manager.getPendingMessages();
  Json list = Json::array();
  Table table({{marked("Bill"), false, 16, 0}, {marked("Due"), false, 0, 1}, {marked("Reminder"), false, 0, 2}});
  for (const std::string& title : titles) {
    const Dictionary message = manager.dictionaryForBill(title).value_or(Dictionary());
    list.push_back(messageJson(session.platform, title, message));
    table.add({title, dayText(session.platform, message, key::mailDueDate),
               dayText(session.platform, message, key::mailAlarmDate)});
  }
  if (session.json) return printJson(session.console, list);
  if (titles.empty()) return session.console.line(translated("No message waits."));
  table.print(session.console);
}

void showState(Session& session) {
  const Platform& platform = session.platform;
  (void)requireDataFolder(platform);
  const QMEmailManager manager{platform};
  const bool areOn = QMReminderManager{platform}.shouldAddEmails();
  const std::string to =
      settingText(platform, findSetting(std::string(key::LEMAddress)), platform.defaults.object(key::LEMAddress));
  const bool hasKey = !platform.mail.service().apiKey.empty();
  const std::size_t waiting = manager.getPendingMessages().size();
  if (session.json) {
    return printJson(session.console, {{"on", areOn},
                                       {"to", to.empty() ? Json(nullptr) : Json(to)},
                                       {"service", manager.serviceAddress()},
                                       {"hasKey", hasKey},
                                       {"waiting", waiting}});
  }
  Console& console = session.console;
  console.line(areOn ? translated("Reminders by e-mail: on") : translated("Reminders by e-mail: off"));
  // translators: the address to which reminders are sent, or "nobody yet"
  console.line(sentence("To: {}", to.empty() ? translated("nobody yet") : printable(to)));
  const std::string service = printable(manager.serviceAddress());
  console.line(hasKey ? sentence("Service: {}", service) : sentence("Service: {}, no API key is set up", service));
  // translators: how many messages wait
  console.line(sentence("Waiting: {}", waiting));
}

}  // namespace

void addMail(CLI::App& app, Invocation& invocation) {
  const auto recipient = std::make_shared<std::optional<std::string>>();
  const auto withRecipient = [recipient](void (*run)(Session&)) {
    return [recipient, run](Session& session) {
      if (*recipient) setRecipient(session, **recipient);
      run(session);
    };
  };
  CLI::App* mail = addCommand(app, invocation,
                              {"mail", marked("Show how reminders by e-mail stand, or send them"),
                               "tallyvane settings set QMEmailsEnabled yes\n  tallyvane mail test --to me@example.org"},
                              nullptr);
  mail->add_option("--to", *recipient, "Have reminders sent to this address from now on");
  mail->require_subcommand(0, 1);
  mail->callback([&invocation, mail, withRecipient] {
    if (mail->get_subcommands().empty()) invocation.action = withRecipient(showState);
  });
  addCommand(*mail, invocation, {"queue", marked("List the messages that wait"), "tallyvane mail queue"},
             withRecipient(showQueue));
  addCommand(*mail, invocation,
             {"check", marked("Send what is due, and wait for the service's answers"), "tallyvane mail check"},
             withRecipient(checkQueue));
  addCommand(*mail, invocation, {"test", marked("Send a test message"), "tallyvane mail test --to me@example.org"},
             withRecipient(sendTest));
}

}  // namespace tallyvane::cli
