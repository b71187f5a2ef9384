// A web service of the test's own, on the loopback interface, with its own certificate. See web_server.py.
#pragma once

#include <sstream>
#include <string>

#include "freedesktop/XdgFolders.h"
#include "support/ChildProcess.h"
#include "support/NamedPipe.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

class WebServer {
 public:
  WebServer() {
    std::istringstream ports(ready_.nextText());
    ports >> https >> http >> closing >> proxy >> guardedProxy >> refusingProxy >> slowProxy >> socksProxy;
    if (socksProxy == 0) throw std::runtime_error("the web server does not start: " + program_.said());
    for (const char* name : {"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY", "no_proxy"}) {
      ::unsetenv(name);
    }
  }
  [[nodiscard]] std::string url(const std::string& path) const {
    return "https://127.0.0.1:" + std::to_string(https) + path;
  }
  [[nodiscard]] std::string certificate() const { return folder.path + "/certificate.pem"; }
  /// Every request so far, as it came, each with a line "====" behind it.
  [[nodiscard]] std::string requests() const { return contentOf(folder.path + "/requests"); }
  [[nodiscard]] std::string proxied() const { return contentOf(folder.path + "/proxied"); }

  TemporaryFolder folder;
  int https = 0;
  int http = 0;
  int closing = 0;
  int proxy = 0;
  int guardedProxy = 0;   ///< wants a password
  int refusingProxy = 0;  ///< forbids every connection
  int slowProxy = 0;      ///< takes most of a second to say yes, byte by byte
  int socksProxy = 0;     ///< refuses, whoever asks

 private:
  NamedPipe ready_{folder.path + "/ports"};
  ChildProcess program_{{"/usr/bin/python3", TALLYVANE_TEST_SUPPORT "/web_server.py", folder.path},
                        {"PATH=/usr/bin:/bin", "HOME=" + folder.path},
                        folder.path + "/output"};
};

}  // namespace tallyvane::testing
