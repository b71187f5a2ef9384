// Requests and forms on a desktop of fakes.
#pragma once

#include <gtest/gtest.h>

#include "net/HeaderNames.h"
#include "net/QMFormDataRequest.h"
#include "support/Fakes.h"

namespace tallyvane::testing {

/// A request, and what is told of its end.
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

/// A form that has no entries yet.
struct Forms : ::testing::Test {
  Forms() {
    (void)desktop.files.createFolder("/f");
    desktop.files.content["/f/a.pdf"] = "PDF\r\n%";
  }
  std::string built() {
    form->buildPostBody();
    return form->postBody();
  }
  std::string contentType() { return std::string(headerValue(form->requestHeaders(), "content-type")); }

  FakeDesktop desktop;
  std::shared_ptr<QMFormDataRequest> form = QMFormDataRequest::requestWithURL(desktop.platform, "https://mail/send");
};

}  // namespace tallyvane::testing
