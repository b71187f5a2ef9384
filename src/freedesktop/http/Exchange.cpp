#include "freedesktop/http/Exchange.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stop_token>
#include <string_view>

#include "foundation/Ascii.h"
#include "freedesktop/http/CurlTransport.h"

namespace tallyvane::curl {

namespace {

constexpr long mostRedirects = 10;
constexpr const char* secure = "https";
constexpr const char* anyWeb = "http,https";
constexpr long unauthorized = 401;
constexpr long proxyAuthentication = 407;

long milliseconds(std::chrono::duration<double> time) { return static_cast<long>(std::ceil(time.count() * 1000)); }

bool isSecure(std::string_view url) { return ::strncasecmp(std::string(url).c_str(), "https:", 6) == 0; }

/// How much is read at once. A throttled body is sent in pieces of an eighth of a second: curl would send what fits its
/// buffer in one go and then stand still for as long as that should have taken.
std::size_t pieceOf(const HttpBody& body, std::size_t room) {
  constexpr std::uint64_t piecesPerSecond = 8;
  if (body.bytesPerSecond() == 0) return room;
  return std::min<std::size_t>(room, std::max<std::uint64_t>(1, body.bytesPerSecond() / piecesPerSecond));
}

/// A line break would start a header that nobody asked for.
bool isOneLine(std::string_view text) { return text.find_first_of(std::string_view("\r\n\0", 3)) == text.npos; }

}  // namespace

Exchange::Exchange(const HttpExchange& exchange, const std::string& certificates)
    : exchange_(exchange), easy_(::curl_easy_init()), multi_(::curl_multi_init()) {
  if (easy_ && multi_) setUp(certificates);
}

void Exchange::setUp(const std::string& certificates) {
  CURL* easy = easy_.get();
  ::curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, error_);
  ::curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  ::curl_easy_setopt(easy, CURLOPT_URL, exchange_.url.c_str());
  ::curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, anyWeb);
  ::curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
  ::curl_easy_setopt(easy, CURLOPT_MAXREDIRS, mostRedirects);
  ::curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, isSecure(exchange_.url) ? secure : anyWeb);
  ::curl_easy_setopt(easy, CURLOPT_COOKIEFILE, "");  // an engine for cookies that starts with none
  ::curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, milliseconds(patience()));
  // A lookup that gets no answer goes on in its thread and is not waited for: this module is never unloaded.
  ::curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
  ::curl_easy_setopt(easy, CURLOPT_PREREQFUNCTION, noteAsking);
  ::curl_easy_setopt(easy, CURLOPT_PREREQDATA, this);
  ::curl_easy_setopt(easy, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
  if (!certificates.empty()) ::curl_easy_setopt(easy, CURLOPT_CAINFO, certificates.c_str());
  if (!exchange_.userName.empty()) {
    ::curl_easy_setopt(easy, CURLOPT_HTTPAUTH, CURLAUTH_BASIC | CURLAUTH_DIGEST);
    ::curl_easy_setopt(easy, CURLOPT_USERNAME, exchange_.userName.c_str());
    ::curl_easy_setopt(easy, CURLOPT_PASSWORD, exchange_.password.c_str());
  }
  ::curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, takeBody);
  ::curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
  ::curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, takeHeader);
  ::curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
  setUpBody();
  setUpHeaders();
}

void Exchange::setUpBody() {
  CURL* easy = easy_.get();
  if (exchange_.body != nullptr) {
    ::curl_easy_setopt(easy, CURLOPT_POST, 1L);
    ::curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(exchange_.body->size()));
    ::curl_easy_setopt(easy, CURLOPT_READFUNCTION, readBody);
    ::curl_easy_setopt(easy, CURLOPT_READDATA, this);
    ::curl_easy_setopt(easy, CURLOPT_SEEKFUNCTION, rewindBody);
    ::curl_easy_setopt(easy, CURLOPT_SEEKDATA, this);
    ::curl_easy_setopt(easy, CURLOPT_MAX_SEND_SPEED_LARGE, static_cast<curl_off_t>(exchange_.body->bytesPerSecond()));
  } else if (exchange_.method == "HEAD") {
    ::curl_easy_setopt(easy, CURLOPT_NOBODY, 1L);
  } else if (exchange_.method == "POST") {
    ::curl_easy_setopt(easy, CURLOPT_COPYPOSTFIELDS, "");
  }
  // Set only where it differs: curl would repeat a method set here after a redirect that turns POST into GET.
  const bool isCurlsOwn = exchange_.method == (exchange_.body != nullptr ? "POST" : "GET") ||
                          exchange_.method == "POST" || exchange_.method == "HEAD";
  if (!isCurlsOwn) ::curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, exchange_.method.c_str());
}

void Exchange::setUpHeaders() {
  const auto add = [this](const std::string& line) {
    if (curl_slist* longer = ::curl_slist_append(headers_.get(), line.c_str())) {
      (void)headers_.release();
      headers_.reset(longer);
    }
  };
  add("Expect:");        // the body goes at once, without asking first whether it is wanted
  add("Content-Type:");  // none but the caller's
  for (const auto& [name, value] : exchange_.headers) {
    if (isOneLine(name) && isOneLine(value)) add(value.empty() ? name + ";" : name + ": " + value);
  }
  ::curl_easy_setopt(easy_.get(), CURLOPT_HTTPHEADER, headers_.get());
}

HttpOutcome Exchange::perform() {
  if (!easy_ || !multi_) return HttpFailure{HttpFailure::Kind::cannotConnect, "libcurl has no memory"};
  if (::curl_multi_add_handle(multi_.get(), easy_.get()) != CURLM_OK) {
    return HttpFailure{HttpFailure::Kind::cannotConnect, "libcurl refuses the exchange"};
  }
  const End end = run();
  const CURLcode code = result();
  ::curl_multi_remove_handle(multi_.get(), easy_.get());
  if (end == End::cancelled) return HttpFailure{HttpFailure::Kind::cancelled, exchange_.url + ": cancelled"};
  if (end == End::timedOut) return HttpFailure{HttpFailure::Kind::timedOut, exchange_.url + ": nothing moved any more"};
  return outcome(code);
}

/// Sockets are waited for, never the clock alone, so that a stop wakes it and a slow transfer counts as moving. The
/// time to connect starts short, because of it half goes to the first of several addresses, and grows with each move:
/// the way through a proxy may be slow.
Exchange::End Exchange::run() {
  using Clock = std::chrono::steady_clock;
  using Milliseconds = std::chrono::milliseconds;
  const std::stop_callback wake(exchange_.stop, [this] { ::curl_multi_wakeup(multi_.get()); });
  const auto limit = std::chrono::duration_cast<Clock::duration>(patience());
  const Clock::time_point begin = Clock::now();
  Clock::time_point lastMove = begin;
  for (int running = 1;;) {
    if (exchange_.stop.stop_requested()) return End::cancelled;
    if (::curl_multi_perform(multi_.get(), &running) != CURLM_OK || running == 0) return End::whole;
    const auto left = std::chrono::ceil<Milliseconds>(lastMove + limit - Clock::now());
    int ready = 0;
    ::curl_multi_poll(multi_.get(), nullptr, 0, static_cast<int>(std::clamp<long long>(left.count(), 0, 60'000)),
                      &ready);
    if (hasMoved(ready)) {
      lastMove = Clock::now();
      ::curl_easy_setopt(easy_.get(), CURLOPT_CONNECTTIMEOUT_MS, milliseconds(lastMove - begin + patience()));
    } else if (Clock::now() - lastMove >= limit) {
      return exchange_.stop.stop_requested() ? End::cancelled : End::timedOut;
    }
  }
}

std::chrono::duration<double> Exchange::patience() const {
  constexpr double most = 1e6;  // more would not fit the clocks' counts
  return std::chrono::duration<double>(std::clamp(exchange_.timeOutSeconds, 0.0, most));
}

bool Exchange::hasMoved(int readySockets) {
  curl_off_t up = 0;
  curl_off_t down = 0;
  ::curl_easy_getinfo(easy_.get(), CURLINFO_SIZE_UPLOAD_T, &up);
  ::curl_easy_getinfo(easy_.get(), CURLINFO_SIZE_DOWNLOAD_T, &down);
  const bool counted = up + down != moved_;
  moved_ = up + down;
  return readySockets > 0 || counted;
}

CURLcode Exchange::result() {
  int left = 0;
  while (const CURLMsg* message = ::curl_multi_info_read(multi_.get(), &left)) {
    if (message->msg == CURLMSG_DONE) return message->data.result;
  }
  return CURLE_FAILED_INIT;
}

HttpOutcome Exchange::outcome(CURLcode code) {
  // Where redirecting ends without arriving, the last response is whole all the same.
  if (code != CURLE_OK && code != CURLE_TOO_MANY_REDIRECTS) return failure(code);
  answer_.status = static_cast<int>(number(CURLINFO_RESPONSE_CODE));
  if (answer_.status == unauthorized || answer_.status == proxyAuthentication) {
    return HttpFailure{HttpFailure::Kind::authenticationNeeded,
                       exchange_.url + ": answered " + std::to_string(answer_.status)};
  }
  return std::move(answer_);
}

HttpFailure Exchange::failure(CURLcode code) const {
  const char* text = error_[0] != '\0' ? error_ : ::curl_easy_strerror(code);
  return {kindOf(code), bodyError_.empty() ? exchange_.url + ": " + text : bodyError_};
}

HttpFailure::Kind Exchange::kindOf(CURLcode code) const {
  using Kind = HttpFailure::Kind;
  if (!bodyError_.empty()) return Kind::bodyUnreadable;
  if (wantsCredentials(code)) return Kind::authenticationNeeded;
  if (code == CURLE_OPERATION_TIMEDOUT) return Kind::timedOut;
  return wasAsked() ? Kind::connectionBroke : Kind::cannotConnect;
}

bool Exchange::wantsCredentials(CURLcode code) const {
  const long socks = number(CURLINFO_PROXY_ERROR);
  return code == CURLE_LOGIN_DENIED || number(CURLINFO_HTTP_CONNECTCODE) == proxyAuthentication ||
         socks == CURLPX_NO_AUTH || socks == CURLPX_USER_REJECTED;
}

/// Whether there was a connection, through all proxies and with all its keys, over which the request could go out. A
/// redirect needs one anew.
bool Exchange::wasAsked() const { return askedHop_ == number(CURLINFO_REDIRECT_COUNT); }

long Exchange::number(CURLINFO info) const {
  long value = 0;
  ::curl_easy_getinfo(easy_.get(), info, &value);
  return value;
}

int Exchange::noteAsking(void* self, char*, char*, int, int) {
  auto& exchange = *static_cast<Exchange*>(self);
  exchange.askedHop_ = exchange.number(CURLINFO_REDIRECT_COUNT);
  return CURL_PREREQFUNC_OK;
}

std::size_t Exchange::readBody(char* buffer, std::size_t size, std::size_t count, void* self) {
  auto& exchange = *static_cast<Exchange*>(self);
  const Result<std::string> piece = exchange.exchange_.body->read(pieceOf(*exchange.exchange_.body, size * count));
  if (!piece) {
    exchange.bodyError_ = piece.error();
    return CURL_READFUNC_ABORT;
  }
  std::memcpy(buffer, piece->data(), piece->size());
  return piece->size();
}

int Exchange::rewindBody(void* self, curl_off_t offset, int origin) {
  if (offset != 0 || origin != SEEK_SET) return CURL_SEEKFUNC_CANTSEEK;
  static_cast<Exchange*>(self)->exchange_.body->rewind();
  return CURL_SEEKFUNC_OK;
}

/// What is too long to be kept is read to its end all the same: only so is a whole response told from a broken one.
std::size_t Exchange::takeBody(const char* bytes, std::size_t size, std::size_t count, void* self) {
  auto& exchange = *static_cast<Exchange*>(self);
  std::string& body = exchange.answer_.body;
  const std::size_t length = size * count;
  body.append(bytes, std::min(length, CurlTransport::keptBodyBytes - body.size()));
  exchange.received_ += length;
  return exchange.received_ <= CurlTransport::maximumBodyBytes ? length : 0;  // which curl takes for a failure
}

/// Every response of the exchange passes here, those of proxies and before redirects too; the last one stays.
std::size_t Exchange::takeHeader(const char* bytes, std::size_t size, std::size_t count, void* self) {
  HttpAnswer& answer = static_cast<Exchange*>(self)->answer_;
  const std::string_view line(bytes, size * count);
  if (line.starts_with("HTTP/")) {
    answer.headers.clear();
    answer.body.clear();
  } else if (const std::size_t colon = line.find(':'); colon != std::string_view::npos) {
    answer.headers.emplace_back(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
  }
  return size * count;
}

}  // namespace tallyvane::curl
