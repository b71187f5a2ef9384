// Sections 3 and 4 of QMHTTPRequest: on its way, and how it ended.
#include <utility>

#include "net/HeaderNames.h"
#include "net/QMDataDecompressor.h"
#include "net/QMHTTPRequest.h"
#include "net/QMInputStream.h"

namespace tallyvane {

namespace {

QMHTTPRequestError errorOf(const HttpFailure& failure) {
  using Kind = HttpFailure::Kind;
  const auto error = [&](QMHTTPRequestError::Code code, const char* description) {
    return QMHTTPRequestError{.code = code, .description = description, .reason = failure.reason};
  };
  switch (failure.kind) {
    case Kind::cannotConnect:
      return error(QMHTTPRequestError::cannotConnect, "Unable to start HTTP connection");
    case Kind::timedOut:
      return error(QMHTTPRequestError::timedOut, "The request timed out");
    case Kind::cancelled:
      return error(QMHTTPRequestError::cancelled, "The request was cancelled");
    case Kind::authenticationNeeded:
      return error(QMHTTPRequestError::authenticationNeeded, "Authentication needed");
    case Kind::bodyUnreadable:
      return error(QMHTTPRequestError::bodyNotBuilt, "The request body could not be built");
    case Kind::connectionBroke:
      break;
  }
  return error(QMHTTPRequestError::connectionBroke, "A connection failure occurred");
}

}  // namespace

/// The body is built on the main thread, where the files are; only the transfer leaves it. Each piece of work gives its
/// hold on the request to the next, so that the last one goes on the main thread.
void QMHTTPRequest::startAsynchronous() {
  prepare();
  platform_.workQueue.post([request = shared_from_this()](const std::stop_token& stop) mutable {
    request->perform(stop);
    MainQueue& mainQueue = request->platform_.mainQueue;
    mainQueue.post([held = std::move(request)] { held->report(); });
  });
}

void QMHTTPRequest::startSynchronous() {
  const auto held = shared_from_this();  // a callback may drop the last other hold
  prepare();
  perform({});
  report();
}

void QMHTTPRequest::prepare() {
  if (!error_) buildPostBody();
  if (allowCompressedResponse) addRequestHeader("Accept-Encoding", "gzip, deflate");
}

HttpExchange QMHTTPRequest::exchange() const {
  HttpExchange exchange;
  exchange.method = requestMethod;
  exchange.url = url;
  exchange.headers = requestHeaders_;
  exchange.timeOutSeconds = timeOutSeconds;
  exchange.userName = username;
  exchange.password = password;
  exchange.stop = stop_.get_token();
  return exchange;
}

void QMHTTPRequest::perform(const std::stop_token& queueStop) {
  if (error_) return;
  const std::stop_callback alsoStop(queueStop, [this] { stop_.request_stop(); });
  std::optional<QMInputStream> body = bodyStream();
  HttpExchange asked = exchange();
  asked.body = body ? &*body : nullptr;
  take(platform_.http.perform(asked));
}

void QMHTTPRequest::take(HttpOutcome outcome) {
  if (const auto* failure = std::get_if<HttpFailure>(&outcome)) return failWithError(errorOf(*failure));
  answer_ = std::move(std::get<HttpAnswer>(outcome));
  unpackAnswer();
}

/// A response that cannot be unpacked has come all the same, so what was asked has been done.
void QMHTTPRequest::unpackAnswer() {
  const std::string_view encoding = headerValue(answer_.headers, "Content-Encoding");
  const bool isPacked =
      isSameHeader(encoding, "gzip") || isSameHeader(encoding, "x-gzip") || isSameHeader(encoding, "deflate");
  if (!isPacked || answer_.body.empty()) return;
  Result<std::string> plain = QMDataDecompressor::uncompressData(answer_.body);
  if (plain) {
    answer_.body = std::move(*plain);
  } else {
    answerFault_ = url + ": the answer is kept as it came: it " + plain.error();
  }
}

/// The blocks go with what they hold once one has run.
void QMHTTPRequest::report() {
  removeTemporary();
  if (!answerFault_.empty()) platform_.log.diagnostic(answerFault_);
  const auto completed = std::exchange(completionBlock_, nullptr);
  const auto failed = std::exchange(failedBlock_, nullptr);
  if (delegate != nullptr) error_ ? delegate->requestFailed(*this) : delegate->requestFinished(*this);
  const auto& block = error_ ? failed : completed;
  if (block) block();
}

}  // namespace tallyvane
