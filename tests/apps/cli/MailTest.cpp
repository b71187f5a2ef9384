#include "support/CliCommands.h"

namespace tallyvane::testing {
namespace {

struct MailCommand : CliCommands {
  MailCommand() {
    add({"Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "900", "--remind", "2"});
    done({"settings", "set", "QMEmailsEnabled", "yes"});
  }
  Outcome run(const Arguments& arguments) { return cli.run(arguments); }
};

TEST_F(MailCommand, TellsHowMailStandsAndSetsTheRecipient) {
  EXPECT_EQ(run({"mail"}).out,
            "Reminders by e-mail: on\nTo: nobody yet\nService: https://mail.example:8443/mailer/send\n"
            "Waiting: 0\n");
  EXPECT_EQ(run({"mail", "check"}).status, 1);
  cli.desktop.mail.content.apiKey.clear();
  EXPECT_THAT(run({"mail", "--to", "ada@example.org"}).out,
              AllOf(HasSubstr("To: ada@example.org"), HasSubstr("no API key is set up")));
  EXPECT_THAT(run({"mail", "test"}).err, HasSubstr("no API key"));
  for (const char* wrong : {"ada", "@x", "a b@x", "a@b@c", "a@x\n"}) {
    EXPECT_EQ(run({"mail", "test", "--to", wrong}).status, 2) << wrong;
  }
  EXPECT_EQ(run({"settings", "get", "LEMAddress"}).out, "ada@example.org\n");
  EXPECT_TRUE(cli.desktop.http.exchanges.empty());
}

TEST_F(MailCommand, ChecksTheQueueAndShowsEachOutcome) {
  cli.desktop.http.outcome = HttpFailure{HttpFailure::Kind::timedOut, "silence"};
  Outcome outcome = run({"mail", "check", "--to", "ada@example.org"});
  EXPECT_EQ(outcome.out, "Rent: not sent: The request timed out: silence\n");
  EXPECT_EQ(outcome.err, "tallyvane: 1 of 1 message did not get through. What was not sent waits in the queue.\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(run({"mail", "queue"}).out, "Rent\t2027-03-13\t2027-03-11\n");
  EXPECT_THAT(run({"mail", "queue", "--json"}).out, HasSubstr("\"subject\": \"Bill Due Soon: Rent\""));
  cli.desktop.http.outcome = HttpAnswer{200, {}, "id 5"};
  outcome = run({"mail", "check"});
  EXPECT_EQ(outcome.out, "Rent: sent; the service answered 200: id 5\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(run({"mail", "check"}).out, "No message was due to be sent.\n");
  EXPECT_EQ(run({"mail", "queue"}).out, "No message waits.\n");
}

TEST_F(MailCommand, ARefusalOfTheServiceIsShownAndFailsTheCommand) {
  cli.desktop.http.outcome = HttpAnswer{500, {}, "Unauthorized\x1b[2J"};
  const Outcome outcome = run({"mail", "test", "--to", "ada@example.org"});
  EXPECT_THAT(outcome.out, HasSubstr("Test Message: refused; the service answered 500: Unauthorized\uFFFD[2J"));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(run({"mail", "test", "--json"}).out, AllOf(HasSubstr("\"sent\": false"), HasSubstr("\"status\": 500")));
}

TEST_F(MailCommand, TheKeyIsNeitherShownNorLoggedEvenWhenTheServiceQuotesIt) {
  const std::string key = cli.desktop.mail.content.apiKey;
  const HttpOutcome outcomes[] = {HttpAnswer{401, {}, std::string(290, '.') + key + key},
                                  HttpFailure{HttpFailure::Kind::connectionBroke, "sent " + key}};
  const Arguments commands[] = {{"mail", "test", "--to", "ada@example.org"},
                                {"mail", "test", "--json"},
                                {"mail", "check", "--json"},
                                {"mail", "queue", "--json"},
                                {"mail", "--json"},
                                {"settings", "--json"}};
  std::string told;
  for (const HttpOutcome& outcome : outcomes) {
    cli.desktop.http.outcome = outcome;
    for (const Arguments& arguments : commands) {
      const Outcome result = run(arguments);
      told += result.out + result.err;
    }
  }
  for (const auto* log : {&cli.desktop.log.lines, &cli.desktop.log.diagnostics})
    for (const std::string& line : *log) told += line;
  EXPECT_THAT(cli.desktop.http.sent.at(0), HasSubstr(key));
  EXPECT_THAT(told, AllOf(HasSubstr("(API key)"), Not(HasSubstr(key.substr(0, 8)))));
}

TEST_F(MailCommand, NothingIsSentWhenTheQueueCannotBeWritten) {
  (void)run({"mail", "--to", "ada@example.org"});
  FailingFileStore full(cli.desktop.files, 1);
  EXPECT_EQ(cli.runOn(full, {"mail", "check"}).status, 1);
  EXPECT_TRUE(cli.desktop.http.exchanges.empty());
}

}  // namespace
}  // namespace tallyvane::testing
