// The request engine: one HTTP request, from its making to its last callback.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

#include "net/QMDataCompressor.h"
#include "platform/Platform.h"

namespace tallyvane {

class QMInputStream;
class QMHTTPRequest;

inline constexpr std::string_view QMHTTPRequestErrorDomain = "QMHTTPRequestErrorDomain";

/// Why a request failed.
struct QMHTTPRequestError {
  enum Code {
    cannotConnect = 1,
    connectionBroke = 2,
    timedOut = 3,
    cancelled = 4,
    authenticationNeeded = 5,
    bodyNotBuilt = 6,
  };
  std::string domain = std::string(QMHTTPRequestErrorDomain);
  Code code = connectionBroke;
  std::string description;  ///< one of the product's fixed texts
  std::string reason;       ///< what the system says; may be empty
};

class QMHTTPRequestDelegate {
 public:
  virtual ~QMHTTPRequestDelegate() = default;
  virtual void requestFinished(QMHTTPRequest& request) = 0;
  virtual void requestFailed(QMHTTPRequest& request) = 0;
};

/// Used once: set up, started, and done when its callbacks have run. Exactly one of finishing and failing is told, on
/// the main thread: first to the delegate, then to the block. Any whole HTTP response finishes a request, whatever its
/// status. Made, set up and started on the main thread; held by a shared pointer, also by the engine until its
/// callbacks have run. The platform outlives it.
class QMHTTPRequest : public std::enable_shared_from_this<QMHTTPRequest> {
 public:
  static std::shared_ptr<QMHTTPRequest> requestWithURL(const Platform& platform, std::string url);

  // 1. What is asked (QMHTTPRequest.cpp)
  std::string url;
  std::string requestMethod = "GET";
  std::string username;  ///< credentials for the server; none when empty
  std::string password;
  double timeOutSeconds = 10;                      ///< without anything moving
  std::uint64_t maxUploadBytesPerSecond = 0;       ///< 0 for no limit
  bool shouldStreamPostDataFromDisk = false;       ///< the body is gathered in a temporary file, not in memory
  std::optional<ContentCoding> requestBodyCoding;  ///< how the body is packed for sending; not at all when absent
  bool allowCompressedResponse = true;
  QMHTTPRequestDelegate* delegate = nullptr;  ///< not owned; outlives the request or is set to null
  /// Replaces the header of this name, in whatever case.
  void addRequestHeader(std::string_view name, std::string value);
  [[nodiscard]] const HttpHeaders& requestHeaders() const { return requestHeaders_; }
  void setCompletionBlock(std::function<void()> block) { completionBlock_ = std::move(block); }
  void setFailedBlock(std::function<void()> block) { failedBlock_ = std::move(block); }

  virtual ~QMHTTPRequest();
  QMHTTPRequest(const QMHTTPRequest&) = delete;
  QMHTTPRequest& operator=(const QMHTTPRequest&) = delete;

  // 2. The body (QMHTTPRequest_body.cpp). A failure makes the request fail.
  void appendPostData(std::string_view bytes);
  void appendPostDataFromFile(const std::string& path);
  /// Completes the body and sets its length. Called by the engine before sending, once per request.
  virtual void buildPostBody();
  [[nodiscard]] bool haveBuiltPostBody() const { return haveBuiltPostBody_; }
  [[nodiscard]] std::uint64_t postLength() const { return postLength_; }
  /// The body as it will be sent; of a streamed one what is in the temporary file.
  [[nodiscard]] std::string postBody() const;
  /// The type of files with this path's extension: "application/octet-stream" when the desktop knows none, and nothing
  /// when there is no such file.
  [[nodiscard]] static std::optional<std::string> mimeTypeForFileAtPath(const Platform& platform,
                                                                        const std::string& path);

  // 3. On its way (QMHTTPRequest_transfer.cpp)
  /// Puts the request on the shared queue and returns; callbacks come by the main queue.
  void startAsynchronous();
  /// Runs it on the calling thread, the main one; callbacks have run when it returns.
  void startSynchronous();
  /// From any thread. A request that is done stays as it ended.
  void cancel() { stop_.request_stop(); }

  // 4. How it ended (valid in callbacks and after them)
  [[nodiscard]] const std::optional<QMHTTPRequestError>& error() const { return error_; }
  [[nodiscard]] int responseStatusCode() const { return answer_.status; }
  /// Unpacked; where that is impossible, as it came, and the log says why.
  [[nodiscard]] const std::string& responseData() const { return answer_.body; }

 protected:
  QMHTTPRequest(const Platform& platform, std::string address) : url(std::move(address)), platform_(platform) {}
  /// The settings of section 1, without callbacks; what was built, sent or received is not copied.
  void copySettingsFrom(const QMHTTPRequest& other);
  /// The first failure counts. It is told when the request is started, so that nobody misses it.
  void failWithError(QMHTTPRequestError error);

  const Platform& platform_;

 private:
  void addToTemporary(std::string_view bytes);
  void compressPostBody();
  [[nodiscard]] Result<> compressInMemory();
  [[nodiscard]] Result<> compressOnDisk();
  void removeTemporary();
  [[nodiscard]] std::optional<QMInputStream> bodyStream() const;
  [[nodiscard]] HttpExchange exchange() const;
  void prepare();
  void perform(const std::stop_token& queueStop);
  void take(HttpOutcome outcome);
  void unpackAnswer();
  void report();

  HttpHeaders requestHeaders_;
  std::function<void()> completionBlock_;
  std::function<void()> failedBlock_;
  std::string postBody_;
  std::string temporary_;  ///< path of the streamed body; empty while there is none
  std::uint64_t postLength_ = 0;
  bool haveBuiltPostBody_ = false;
  std::stop_source stop_;
  std::optional<QMHTTPRequestError> error_;
  HttpAnswer answer_;
  std::string answerFault_;  ///< why the answer is not unpacked; told on the main thread, where the log is
};

}  // namespace tallyvane
