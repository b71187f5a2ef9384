#include "net/QMHTTPRequest.h"

#include <gmock/gmock.h>

#include "net/HeaderNames.h"
#include "net/QMDataCompressor.h"
#include "support/Fakes.h"

namespace tallyvane::testing {
namespace {

using ::testing::ElementsAre;
using Kind = HttpFailure::Kind;

struct Requests : ::testing::Test, QMHTTPRequestDelegate {
  Requests() { renew(); }
  void renew() {
    request = QMHTTPRequest::requestWithURL(desktop.platform, "https://host/path");
    request->delegate = this;
    request->setCompletionBlock([this] { told.emplace_back("completed"); });
    request->setFailedBlock([this] { told.emplace_back("failed"); });
    told.clear();
  }
  void requestFinished(QMHTTPRequest&) override { told.emplace_back("delegate: finished"); }
  void requestFailed(QMHTTPRequest&) override { told.emplace_back("delegate: failed"); }

  FakeDesktop desktop;
  std::vector<std::string> told;
  std::shared_ptr<QMHTTPRequest> request;
};

TEST_F(Requests, AnyWholeAnswerFinishesARequest) {
  for (const int status : {200, 302, 404, 500}) {
    renew();
    desktop.http.outcome = HttpAnswer{status, {{"X", "y"}}, "text"};
    request->startSynchronous();
    EXPECT_THAT(told, ElementsAre("delegate: finished", "completed"));
    EXPECT_EQ(request->responseStatusCode(), status);
    EXPECT_EQ(request->responseData(), "text");
    EXPECT_FALSE(request->error());
  }
}

TEST_F(Requests, EachFailureHasItsCodeAndItsText) {
  const struct {
    Kind kind;
    int code;
    const char* description;
  } cases[] = {{Kind::cannotConnect, 1, "Unable to start HTTP connection"},
               {Kind::connectionBroke, 2, "A connection failure occurred"},
               {Kind::timedOut, 3, "The request timed out"},
               {Kind::cancelled, 4, "The request was cancelled"},
               {Kind::authenticationNeeded, 5, "Authentication needed"},
               {Kind::bodyUnreadable, 6, "The request body could not be built"}};
  for (const auto& c : cases) {
    renew();
    desktop.http.outcome = HttpFailure{c.kind, "why"};
    request->startSynchronous();
    EXPECT_THAT(told, ElementsAre("delegate: failed", "failed"));
    EXPECT_EQ(request->error()->code, c.code);
    EXPECT_EQ(request->error()->description, c.description);
    EXPECT_EQ(request->error()->reason, "why");
  }
}

TEST_F(Requests, OneThatNobodyHoldsLivesUntilItsBlockHasRunOnTheMainQueue) {
  const auto captured = std::make_shared<int>(0);
  request->setCompletionBlock([this, captured] { told.emplace_back("completed"); });
  const std::weak_ptr<QMHTTPRequest> watched = request;
  request->startAsynchronous();
  request.reset();
  EXPECT_TRUE(desktop.http.exchanges.empty());
  desktop.workQueue.run();
  EXPECT_EQ(desktop.http.exchanges.size(), 1U);
  EXPECT_TRUE(told.empty());
  desktop.mainQueue.run();
  EXPECT_THAT(told, ElementsAre("delegate: finished", "completed"));
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(Requests, CancellingItOrEndingTheQueueFailsItOnce) {
  request->startAsynchronous();
  request->cancel();
  desktop.workQueue.run();
  desktop.mainQueue.run();
  EXPECT_THAT(told, ElementsAre("delegate: failed", "failed"));
  renew();
  request->startAsynchronous();
  std::stop_source stop;
  stop.request_stop();
  desktop.workQueue.run(stop.get_token());
  desktop.mainQueue.run();
  EXPECT_EQ(request->error()->code, QMHTTPRequestError::cancelled);
  EXPECT_THAT(told, ElementsAre("delegate: failed", "failed"));
}

TEST_F(Requests, WhatIsSetReachesTheNetwork) {
  request->requestMethod = "PUT";
  request->timeOutSeconds = 0.5;
  request->username = "ada";
  request->maxUploadBytesPerSecond = 1000;
  request->addRequestHeader("X-One", "1");
  request->addRequestHeader("x-one", "2");
  request->appendPostData("some ");
  request->appendPostData("bytes");
  request->startSynchronous();
  const HttpExchange& exchange = desktop.http.exchanges.at(0);
  EXPECT_EQ(exchange.method + exchange.url + exchange.userName, "PUThttps://host/pathada");
  EXPECT_EQ(exchange.timeOutSeconds, 0.5);
  EXPECT_EQ(desktop.http.rates.at(0), 1000U);
  EXPECT_EQ(headerValue(exchange.headers, "X-ONE"), "2");
  EXPECT_EQ(headerValue(exchange.headers, "Accept-Encoding"), "gzip, deflate");
  EXPECT_EQ(desktop.http.sent.at(0), "some bytes");
}

TEST_F(Requests, PackedAnswersAreUnpackedAndBrokenOnesFail) {
  const std::string packed = *QMDataCompressor::compressData(std::string(100'000, 'x'));
  const HttpHeaders gzip{{"content-encoding", "GZIP"}};
  desktop.http.outcome = HttpAnswer{200, gzip, packed};
  request->startSynchronous();
  EXPECT_EQ(request->responseData(), std::string(100'000, 'x'));
  for (const std::string& broken : {packed.substr(0, packed.size() / 2), std::string("text")}) {
    renew();
    desktop.http.outcome = HttpAnswer{200, gzip, broken};
    request->startSynchronous();
    ASSERT_TRUE(request->error()) << broken.size();
    EXPECT_EQ(request->error()->description, "A connection failure occurred");
  }
}

TEST_F(Requests, TypesOfFilesComeFromTheirExtensions) {
  for (const char* name : {"/r.pdf", "/r.odd", "/.pdf", "/a.b/none"}) desktop.files.content[name] = "x";
  const auto type = [&](const char* path) { return QMHTTPRequest::mimeTypeForFileAtPath(desktop.platform, path); };
  EXPECT_EQ(type("/r.pdf"), "application/pdf");
  for (const char* path : {"/r.odd", "/.pdf", "/a.b/none"}) EXPECT_EQ(type(path), "application/octet-stream") << path;
  EXPECT_EQ(type("/missing.pdf"), std::nullopt);
}

}  // namespace
}  // namespace tallyvane::testing
