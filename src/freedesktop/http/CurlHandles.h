// libcurl's objects, owned.
#pragma once

#include <curl/curl.h>

#include <memory>

namespace tallyvane::curl {

template <auto close>
struct Closer {
  template <typename Object>
  void operator()(Object* object) const {
    close(object);
  }
};

using Easy = std::unique_ptr<CURL, Closer<::curl_easy_cleanup>>;
using Multi = std::unique_ptr<CURLM, Closer<::curl_multi_cleanup>>;
using List = std::unique_ptr<curl_slist, Closer<::curl_slist_free_all>>;

}  // namespace tallyvane::curl
