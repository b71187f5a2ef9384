// Requests to a real server.

#include "freedesktop/http/CurlTransport.h"
#include "support/HttpTransfers.h"
#include "support/Matchers.h"
#include "support/SilentPort.h"
#include "support/UnansweredLookups.h"

namespace tallyvane::testing {
namespace {

TEST_F(HttpTransportTest, AFormArrivesExactlyAsItWasSent) {
  exchange.headers = {{"Content-Type", "application/x-www-form-urlencoded; charset=utf-8"},
                      {"X-Injected", "a\r\nX-Evil: b"}};
  EXPECT_EQ(post(server.url("/mailer/send"), "a=1&b=x%20y%26z"), "200 fine");
  EXPECT_EQ(server.requests(), "POST /mailer/send HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server.https) +
                                   "\r\nAccept: */*\r\nContent-Type: application/x-www-form-urlencoded; "
                                   "charset=utf-8\r\nContent-Length: 15\r\n\r\na=1&b=x%20y%26z\n====\n");
}

TEST_F(HttpTransportTest, EachPeerHasItsOutcome) {
  const std::pair<std::string, const char*> cases[] = {{server.url("/500"), "500 Unauthorized: no such key"},
                                                       {server.url("/half"), "connectionBroke"},
                                                       {server.url("/hello"), "connectionBroke"},
                                                       {server.url("/circle"), "302 "},
                                                       {server.url("/downgrade"), "cannotConnect"},
                                                       {server.url("/cookie"), "200 Cookie: taste=sweet"},
                                                       {server.url("/cookies"), "200 "},
                                                       {server.url("/guarded"), "authentication"},
                                                       {on(server.https), "connectionBroke"},
                                                       {on(server.closing), "connectionBroke"},
                                                       {"https" + on(server.closing).substr(4), "cannotConnect"},
                                                       {on(1), "cannotConnect"},
                                                       {"ftp://127.0.0.1/", "cannotConnect"},
                                                       {"", "cannotConnect"}};
  for (const auto& [url, said] : cases) EXPECT_EQ(get(url), said) << url << " " << reason;
  EXPECT_EQ(get(server.url("/huge")).size(), std::string("200 ").size() + CurlTransport::keptBodyBytes);
  settings.content.certificates.clear();
  LoadedHttpTransport trustsTheSystem(TALLYVANE_HTTP_MODULE, settings);
  exchange.url = server.url("/mailer/send");
  EXPECT_THAT(std::get<HttpFailure>(trustsTheSystem.perform(exchange)).reason, HasSubstr("certificate"));
}

TEST_F(HttpTransportTest, ARedirectTakesTheBodyAlongOnlyWhereItSaysSo) {
  EXPECT_EQ(post(server.url("/moved"), "form"), "200 fine");
  EXPECT_THAT(server.requests(), HasSubstr("GET /mailer/send HTTP/1.1"));
  EXPECT_EQ(post(server.url("/kept"), "form"), "200 fine");
  EXPECT_THAT(server.requests(), AllOf(HasSubstr("POST /mailer/send HTTP/1.1"), EndsWith("\r\n\r\nform\n====\n")));
}

TEST_F(HttpTransportTest, CredentialsAreGivenWhereTheyAreAskedFor) {
  exchange.userName = "ada";
  exchange.password = "secret";
  EXPECT_EQ(get(server.url("/guarded")), "200 welcome");
  exchange.password = "wrong";
  EXPECT_EQ(get(server.url("/guarded")), "authentication");
}

TEST_F(HttpTransportTest, OnlyStandingStillTimesOut) {
  exchange.timeOutSeconds = 0.6;
  const SilentPort silent;
  for (const std::string& url : {server.url("/silence"), "https" + on(silent.number()).substr(4)}) {
    EXPECT_EQ(get(url), "timedOut") << url;
  }
  EXPECT_EQ(get(server.url("/trickle")), "200 xxxxxxxx");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(post(server.url("/mailer/send"), std::string(20'000, 'b'), 25'000), "200 fine");
  EXPECT_GT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds{600});
  ::setenv("https_proxy", on(server.slowProxy, "").c_str(), 1);
  EXPECT_EQ(get(server.url("/mailer/send")), "200 fine");
}

TEST_F(HttpTransportTest, AStopEndsAnExchangeThatWaits) {
  exchange.timeOutSeconds = 600;
  const std::pair<std::string, std::function<bool()>> cases[] = {
      {server.url("/silence"), [&] { return !server.requests().empty(); }},
      {"https://" + std::string(UnansweredLookups::name), [] { return UnansweredLookups::hasBegun.load(); }}};
  for (const auto& [url, waits] : cases) {
    std::stop_source stop;
    exchange.stop = stop.get_token();
    std::future<std::string> said;  // ends after the lookup, whatever becomes of the test
    const UnansweredLookups held;
    said = std::async(std::launch::async, [this, target = url] { return get(target); });
    while (!waits()) std::this_thread::yield();
    stop.request_stop();
    ASSERT_EQ(said.wait_for(std::chrono::seconds{60}), std::future_status::ready) << url;
    EXPECT_EQ(said.get(), "cancelled");
  }
}

TEST_F(HttpTransportTest, AConnectionClosedWhileSendingBreaksTheExchangeAndNotTheProgram) {
  EXPECT_EQ(post(server.url("/hangup"), std::string(5'000'000, 'b')), "connectionBroke");
}

TEST_F(HttpTransportTest, ProxiesOfTheEnvironmentAreUsed) {
  ::setenv("https_proxy", on(server.proxy, "").c_str(), 1);
  EXPECT_EQ(get(server.url("/mailer/send")), "200 fine");
  EXPECT_EQ(server.proxied(), "CONNECT 127.0.0.1:" + std::to_string(server.https) + " HTTP/1.1\n");
  ::setenv("no_proxy", "127.0.0.1", 1);
  EXPECT_EQ(get(server.url("/mailer/send")), "200 fine");
  EXPECT_THAT(server.proxied(), EndsWith("HTTP/1.1\n"));
  ::unsetenv("no_proxy");
  const std::string socks = "127.0.0.1:" + std::to_string(server.socksProxy);
  const std::pair<std::string, const char*> cases[] = {
      {on(server.guardedProxy, ""), "authentication"},    {on(server.refusingProxy, ""), "cannotConnect"},
      {on(server.closing, ""), "cannotConnect"},          {"socks5h://" + socks, "cannotConnect"},
      {"socks5h://ada:wrong@" + socks, "authentication"}, {on(1, ""), "cannotConnect"}};
  for (const auto& [proxy, said] : cases) {
    ::setenv("https_proxy", proxy.c_str(), 1);
    EXPECT_EQ(get(server.url("/mailer/send")), said) << proxy << " " << reason;
  }
}

TEST(NetworkModule, OnlyOneInATrustedPlaceIsLoaded) {
  FakeMailSettings settings;
  TemporaryFolder folder;
  const std::string copy = folder.path + "/tallyvane-http.so";
  const auto reason = [&](const std::string& module) {
    HttpExchange exchange;
    exchange.url = "http://127.0.0.1:1";
    return std::get<HttpFailure>(LoadedHttpTransport(module, settings).perform(exchange)).reason;
  };
  std::filesystem::copy(TALLYVANE_HTTP_MODULE, copy);
  EXPECT_THAT(reason(copy), HasSubstr("127.0.0.1"));
  std::filesystem::permissions(folder.path, std::filesystem::perms::all);
  EXPECT_THAT(reason(copy), HasSubstr(folder.path + ": can be changed by anybody"));
  EXPECT_THAT(reason("tallyvane-http.so"), HasSubstr("not an absolute path"));
  EXPECT_THAT(reason("/nowhere/tallyvane-http.so"), HasSubstr("/nowhere: No such file"));
  std::filesystem::permissions(folder.path, std::filesystem::perms::owner_all);
  put(folder.path + "/text.so", "no module");
  EXPECT_THAT(reason(folder.path + "/text.so"), HasSubstr("cannot be loaded"));
  EXPECT_EQ(httpModuleOf("/usr/bin/tallyvane"), "/usr/lib/tallyvane/modules/tallyvane-http.so");
}

TEST(MailSettingsFile, TheUsersGoesBeforeTheSystemsAndThatBeforeTheBuilds) {
  TemporaryFolder folder;
  PosixFileStore files(folder.path);
  RecordingLog log;
  for (const char* name : {"/own/Tallyvane", "/system/Tallyvane"}) (void)files.createFolder(folder.path + name);
  put(folder.path + "/system/Tallyvane/mail.conf",
      "# mail\n[Mail Service]\nHost=mail.example\nPort=8443\nApiKey=theirs\nUserName=a b\n[Other]\nSender=x\n");
  put(folder.path + "/own/Tallyvane/mail.conf", "[Mail Service]\nApiKey=mine\nPort=0\n");
  XdgFolders folders{.dataHome = {}, .configHome = folder.path + "/own", .stateHome = {}, .dataDirs = {}};
  folders.configDirs = {folder.path + "/system"};
  MailService built;
  built.host = built.sender = "built";
  InstalledMailSettings settings(built, folders, files, log);
  const MailService& service = settings.service();
  EXPECT_EQ(service.host + " " + std::to_string(service.port) + " " + service.userName + " " + service.apiKey + " " +
                service.sender,
            "mail.example 8443 a b mine built");
  EXPECT_THAT(log.diagnostics, ElementsAre(HasSubstr("Port must be")));
}

}  // namespace
}  // namespace tallyvane::testing
