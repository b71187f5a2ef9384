#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "net/QMHTTPRequest.h"
#include "net/TextEncoding.h"

namespace tallyvane {

/// Posts form data: named texts and named files. Its method is POST.
class QMFormDataRequest : public QMHTTPRequest {
 public:
  enum class PostFormat { multipart = 0, urlEncoded = 1 };

  struct TextEntry {
    std::string key;
    std::string value;
  };
  struct FilePath {
    std::string path;  ///< read when the body is built
  };
  struct FileEntry {
    std::string key;
    std::string fileName;
    std::string contentType;
    std::variant<FilePath, std::string> data;  ///< a file's path, or the bytes themselves
  };
  /// An absent key makes a call do nothing.
  using Key = std::optional<std::string>;
  using Name = std::optional<std::string>;

  static std::shared_ptr<QMFormDataRequest> requestWithURL(const Platform& platform, std::string url);

  // 1. What is posted, in the order added (QMFormDataRequest.cpp). Set… first removes every entry of that key.
  PostFormat postFormat = PostFormat::urlEncoded;
  TextEncoding stringEncoding = TextEncoding::utf8;
  void addPostValueForKey(const Value& value, const Key& key);
  void setPostValueForKey(const Value& value, const Key& key);
  void addFileForKey(const std::string& path, const Key& key);
  /// A path at which there is no file, or a folder, makes the request fail; the entry is added all the same. Without a
  /// name it is the path's last component, without a type the one of its extension.
  void addFileWithFileNameAndContentTypeForKey(const std::string& path, const Name& fileName, const Name& contentType,
                                               const Key& key);
  void setFileForKey(const std::string& path, const Key& key);
  void setFileWithFileNameAndContentTypeForKey(const std::string& path, const Name& fileName, const Name& contentType,
                                               const Key& key);
  void addDataForKey(std::string data, const Key& key);
  void addDataWithFileNameAndContentTypeForKey(std::string data, const Name& fileName, const Name& contentType,
                                               const Key& key);
  void setDataForKey(std::string data, const Key& key);
  void setDataWithFileNameAndContentTypeForKey(std::string data, const Name& fileName, const Name& contentType,
                                               const Key& key);
  [[nodiscard]] const std::vector<TextEntry>& postData() const { return postData_; }
  [[nodiscard]] const std::vector<FileEntry>& fileData() const { return fileData_; }
  /// Another request of the same settings and entries, which has not been started and has no blocks.
  [[nodiscard]] std::shared_ptr<QMFormDataRequest> copyWithZone() const;

  // 2. The body (QMFormDataRequest_body.cpp)
  /// Files are streamed from disk, and multipart even where the format says URL-encoded.
  void buildPostBody() override;
  void buildURLEncodedPostBody();
  /// Names and file names stand in it as they are, without escapes; deliberate.
  void buildMultipartFormDataPostBody();
  /// In `stringEncoding`; a text that it cannot hold adds nothing.
  void appendPostString(std::string_view text);
  /// Escapes all but ASCII letters, digits and "-", "." and "_", in `stringEncoding`; a blank is %20. Empty for a text
  /// that the encoding cannot hold.
  [[nodiscard]] std::string encodeURL(std::string_view text) const;

 private:
  QMFormDataRequest(const Platform& platform, std::string address);
  void removeFilesOfKey(const Key& key);
  void appendTextPart(const TextEntry& entry);
  void appendFilePart(const FileEntry& entry);

  std::vector<TextEntry> postData_;
  std::vector<FileEntry> fileData_;
};

}  // namespace tallyvane
