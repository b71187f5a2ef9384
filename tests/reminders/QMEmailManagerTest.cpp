#include "reminders/QMEmailManager.h"

#include <gmock/gmock.h>

#include "reminders/QMStore.h"
#include "support/Bills.h"
#include "support/EmailQueue.h"

namespace tallyvane::testing {
namespace {

TEST_F(Mail, AReminderIsMadeFromTheTemplateAndQueued) {
  queue("Rent", minutes{90});
  EXPECT_EQ(file(), (Dictionary{{"Rent", Dictionary{{"subject", "Bill Due Soon: Rent"},
                                                    {"emailBody", "<p>Rent, Due date: Mar 14, 2027; Rent</p>"},
                                                    {"dueDate", noon(2027, 3, 14)},
                                                    {"alarmDate", desktop.clock.moment + minutes{90}},
                                                    {"billTitle", "Rent"}}},
                                {"PendingMessages", Array{"Rent"}}}));
  EXPECT_THAT(keysOf(message("Rent")), ElementsAre("subject", "emailBody", "dueDate", "alarmDate", "billTitle"));
  EXPECT_THAT(logged(), ElementsAre("Message Created"));
  EXPECT_TRUE(desktop.http.exchanges.empty());
  desktop.resources.texts.clear();
  queue("Water", minutes{1});
  queue("Rent", minutes{7});
  EXPECT_THAT(pending(), ElementsAre("Rent", "Water"));
  EXPECT_EQ(message("Rent").valueOr("emailBody", std::string("none")), "");
  EXPECT_THAT(desktop.log.diagnostics, ElementsAre(HasSubstr("template.html"), HasSubstr("template.html")));
  EXPECT_EQ(message("Rent").valueOr("alarmDate", Date()), desktop.clock.moment + minutes{7});
}

TEST_F(Mail, NamesOfAnyKindComeBackFromTheQueueAsTheyAre) {
  const std::vector<std::string> names{"\"quoted\" & <b>", "two\nlines", std::string(10'000, 'n'), "حساب الماء",
                                       "$NextDueDate"};
  for (const std::string& name : names) queue(name, minutes{5});
  EXPECT_EQ(pending(), names);
  for (const std::string& name : names) EXPECT_EQ(message(name).valueOr("billTitle", std::string()), name);
  check(false);
  EXPECT_EQ(desktop.http.sent.size(), names.size());
  EXPECT_THAT(desktop.http.sent[1],
              HasSubstr("&subject=Bill%20Due%20Soon%3A%20two%0Alines&body_html=%3Cp%3Etwo%0Alines%2C"));
  queue("PendingMessages", minutes{5});
  EXPECT_THAT(pending(), IsEmpty());
  EXPECT_THAT(desktop.log.diagnostics, Contains(HasSubstr("another name")));
}

TEST_F(Mail, MinutesAheadAreWholeAndAtLeastOne) {
  const QMEmailManager manager{desktop.platform};
  const std::pair<std::chrono::microseconds, std::int32_t> cases[] = {{seconds{-100}, 1},
                                                                      {seconds{0}, 1},
                                                                      {std::chrono::microseconds{999'999}, 1},
                                                                      {seconds{1}, 1},
                                                                      {seconds{119}, 1},
                                                                      {seconds{120}, 2},
                                                                      {seconds{179}, 2},
                                                                      {minutes{14'400}, 14'400},
                                                                      {minutes{1LL << 32}, 1},
                                                                      {minutes{(1LL << 31) + 5}, 1},
                                                                      {minutes{(1LL << 32) + 5}, 5}};
  for (const auto& [ahead, offset] : cases)
    EXPECT_EQ(manager.getTimeOffset(desktop.clock.moment + ahead), offset) << ahead.count();
  EXPECT_EQ(manager.getTimeOffset(std::nullopt), 1);
}

TEST_F(Mail, TheServiceReceivesTheSevenFieldsInTheirOrder) {
  queue("Rent & more", minutes{14'400});
  desktop.clock.moment += seconds{61};
  check(true);
  EXPECT_THAT(pending(), IsEmpty());
  EXPECT_TRUE(desktop.http.exchanges.empty());
  finish();
  EXPECT_EQ(desktop.http.exchanges.at(0).url, "https://mail.example:8443/mailer/send");
  EXPECT_EQ(desktop.http.exchanges.at(0).method, "POST");
  EXPECT_EQ(desktop.http.exchanges.at(0).timeOutSeconds, 10);
  EXPECT_EQ(
      desktop.http.sent.at(0),
      "username=support%40example.org&api_key=3f1c0b7e-5d2a-4c9b-8e61-0a4d7c2b9f13&from=reminders%40example.org&"
      "to=ada%40example.org&subject=Bill%20Due%20Soon%3A%20Rent%20%26%20more&body_html=%3Cp%3ERent%20%26%20more%2C%"
      "20Due%20date%3A%20Mar%2014%2C%202027%3B%20Rent%20%26%20more%3C%2Fp%3E&time_offset_minutes=14398");
  EXPECT_THAT(logged(), ElementsAre("Message Created", "Sending Message From Queue...",
                                    "Index of pending messages cleared", "Sent Message"));
  desktop.mail.content.port = 443;
  EXPECT_EQ(QMEmailManager{desktop.platform}.serviceAddress(), "https://mail.example/mailer/send");
}

TEST_F(Mail, AMessageMoreThan15DaysAwayLosesItsPlaceButStaysInTheFile) {
  queue("Far", minutes{21'601});
  queue("Near", minutes{21'600});
  logged();
  check(false);
  EXPECT_THAT(logged(), ElementsAre("Saving Message From Queue...", "Sending Message From Queue...", "Sent Message",
                                    "Index of pending messages cleared"));
  EXPECT_THAT(pending(), IsEmpty());
  EXPECT_FALSE(message("Far").empty());
  EXPECT_EQ(desktop.http.sent.size(), 1U);
}

TEST_F(Mail, EveryFailureThatComesLaterPutsItsOwnMessageBack) {
  queue("One", minutes{1});
  queue("Two", minutes{2});
  const Dictionary before = file();
  fail();
  check(true);
  EXPECT_THAT(pending(), IsEmpty());
  finish();
  EXPECT_EQ(file(), before);
  logged();
  check(false);  // put back before the list is cleared
  EXPECT_THAT(pending(), IsEmpty());
  EXPECT_THAT(logged(), ElementsAre("Sending Message From Queue...", "Send Error", "Sending Message From Queue...",
                                    "Send Error", "Index of pending messages cleared"));
}

TEST_F(Mail, AnAnswerOfAnyStatusCountsAsSentAndIsTold) {
  queue("Rent", minutes{1});
  desktop.http.outcome = HttpAnswer{500, {}, "Unauthorized: bad key"};
  std::vector<std::string> told;
  QMEmailManager manager{desktop.platform};
  manager.observer = [&](const MailOutcome& outcome) {
    told.push_back(outcome.billTitle + std::to_string(outcome.status) + outcome.answerText + outcome.failure);
  };
  manager.checkForMessagesToSendAsynchronous(true);
  finish();
  EXPECT_THAT(told, ElementsAre("Rent500Unauthorized: bad key"));
  EXPECT_THAT(pending(), IsEmpty());
  EXPECT_THAT(desktop.log.lines, Contains("Sent Message"));
  EXPECT_THAT(desktop.log.diagnostics, IsEmpty());
  queue("Water", minutes{1});
  check(false);
  EXPECT_THAT(desktop.log.diagnostics, ElementsAre(HasSubstr("Unauthorized: bad key")));
}

TEST_F(Mail, NothingIsSentOrClearedWithoutKeyOrRecipient) {
  queue("Rent", minutes{1});
  const std::string key = std::exchange(desktop.mail.content.apiKey, "");
  check(true);
  EXPECT_THAT(desktop.log.diagnostics, ElementsAre(HasSubstr("no API key")));
  desktop.mail.content.apiKey = key;
  desktop.defaults.content.erase("LEMAddress");
  check(true);
  QMEmailManager{desktop.platform}.sendTestMessage();
  finish();
  EXPECT_THAT(pending(), ElementsAre("Rent"));
  EXPECT_TRUE(desktop.http.exchanges.empty());
}

TEST_F(Mail, TheTestMessageIsOnlyQueuedWhenItFails) {
  QMStore store{desktop.platform};
  desktop.region.words = bracketed;
  QMStore::Button button{"Send Test Message"};
  store.sendTest(button);
  EXPECT_EQ(button.title, "[Message Sent]");
  EXPECT_FALSE(button.enabled);
  EXPECT_TRUE(desktop.http.exchanges.empty());
  finish();
  EXPECT_THAT(desktop.http.sent.at(0),
              HasSubstr("&subject=Tallyvane%20Test%20Message&body_html=%3Cp%3Esample%3C%2Fp%3E&"
                        "time_offset_minutes=0"));
  EXPECT_THAT(logged(), ElementsAre("Sending Message: Tallyvane Test Message", "Sent Message"));
  EXPECT_FALSE(desktop.files.exists(inDataFolder("mailindex.plist")));
  fail();
  store.sendTest(button);
  finish();
  EXPECT_THAT(pending(), ElementsAre("Test Message"));
  store.controlTextDidChange();
  EXPECT_FALSE(store.savePromptHidden);
  store.controlTextDidEndEditing();
  EXPECT_TRUE(store.savePromptHidden && store.testButton.enabled && store.testButton.title == "[Send Test Message]");
}

TEST_F(Mail, AQueueThatCannotBeReadStartsAfreshAndIsNotCleared) {
  for (const char* broken : {"rubbish", "<plist><array/></plist>"}) {
    desktop.files.content[inDataFolder("mailindex.plist")] = broken;
    check(true);
    EXPECT_EQ(desktop.files.content[inDataFolder("mailindex.plist")], broken);
    queue("Rent", minutes{1});
    EXPECT_THAT(pending(), ElementsAre("Rent"));
  }
  desktop.files.putPlist(inDataFolder("mailindex.plist"), Dictionary{{"Other", 1}, {"PendingMessages", "odd"}});
  queue("Rent", minutes{1});
  EXPECT_THAT(pending(), ElementsAre("Rent"));
  EXPECT_EQ(file().valueOr("Other", std::int64_t{0}), 1);
}

TEST_F(Mail, AFullDiskLosesNothingThatWasQueued) {
  queue("Rent", minutes{1});
  const Dictionary before = file();
  FailingFileStore full(desktop.files, 1);
  const Platform platform = desktop.over(full);
  QMEmailManager{platform}.createMessageWithTitleAndAlarmDateAndDueDate("Water", desktop.clock.moment,
                                                                        noon(2027, 3, 14));
  EXPECT_EQ(file(), before);
}

}  // namespace
}  // namespace tallyvane::testing
