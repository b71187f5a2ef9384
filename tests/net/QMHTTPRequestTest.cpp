#include "net/QMHTTPRequest.h"

#include "support/Compression.h"
#include "support/Matchers.h"
#include "support/Requests.h"

namespace tallyvane::testing {
namespace {

TEST_F(Requests, AnyWholeAnswerFinishesARequestUnpackedWhereThatIsPossible) {
  const std::string packed = packedBy(31, "well packed");
  const std::string flood = packedBy(31, std::string(QMDataDecompressor::maximumBytes + 1, 'x'));
  const struct {
    int status;
    const char* coding;
    std::string body;
    std::string seen;
    const char* fault = nullptr;
  } cases[] = {{200, "", "text", "text"},
               {404, "GZIP", packed, "well packed"},
               {302, "br", packed, packed},
               {500, "gzip", packed.substr(0, 20), packed.substr(0, 20), "ends in the middle"},
               {200, "deflate", "\xff\xff", "\xff\xff", "is not well compressed"},
               {200, "gzip", flood, flood, "holds too much"}};
  for (const auto& c : cases) {
    renew();
    desktop.log.diagnostics.clear();
    desktop.http.outcome = HttpAnswer{c.status, {{"content-encoding", c.coding}}, c.body};
    request->startSynchronous();
    EXPECT_THAT(told, ElementsAre("delegate: finished", "completed"));
    EXPECT_EQ(request->responseStatusCode(), c.status);
    EXPECT_TRUE(request->responseData() == c.seen) << c.body.substr(0, 20);
    EXPECT_FALSE(request->error());
    EXPECT_THAT(desktop.log.diagnostics, SizeIs(c.fault == nullptr ? 0U : 1U));
    for (const std::string& diagnostic : desktop.log.diagnostics) EXPECT_THAT(diagnostic, HasSubstr(c.fault));
  }
}

TEST_F(Requests, EachFailureHasItsCodeAndItsText) {
  int code = 0;  // in the order of the kinds
  for (const char* description :
       {"Unable to start HTTP connection", "A connection failure occurred", "The request timed out",
        "The request was cancelled", "Authentication needed", "The request body could not be built"}) {
    renew();
    desktop.http.outcome = HttpFailure{static_cast<HttpFailure::Kind>(code), "why"};
    request->startSynchronous();
    EXPECT_THAT(told, ElementsAre("delegate: failed", "failed"));
    EXPECT_EQ(request->error()->code, ++code);
    EXPECT_EQ(request->error()->description, description);
    EXPECT_EQ(request->error()->reason, "why");
  }
}

TEST_F(Requests, OneThatNobodyHoldsLivesUntilItsBlockHasRunOnTheMainQueue) {
  const auto captured = std::make_shared<int>(0);
  request->setCompletionBlock([this, captured, inside = request.get()] {
    inside->cancel();
    told.emplace_back(inside->error() ? "cancelled" : "completed");
  });
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

TEST_F(Requests, BodiesArePackedAsAskedInMemoryAndOnDisk) {
  for (const bool isGzip : {true, false, true, false}) {
    renew();
    request->requestBodyCoding = isGzip ? ContentCoding::gzip : ContentCoding::deflate;
    request->shouldStreamPostDataFromDisk = desktop.http.sent.size() >= 2;
    request->appendPostData("some bytes");
    request->startSynchronous();
    const std::string& sent = desktop.http.sent.back();
    EXPECT_EQ(headerValue(desktop.http.exchanges.back().headers, "Content-Encoding"), isGzip ? "gzip" : "deflate");
    EXPECT_TRUE(sent.starts_with(isGzip ? "\x1f\x8b" : "\x78\x9c"));
    EXPECT_EQ(*QMDataDecompressor::uncompressData(sent), "some bytes");
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
