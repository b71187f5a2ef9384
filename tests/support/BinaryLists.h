// Binary property lists byte by byte, also such as no writer makes.
#pragma once

#include <plist/plist.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace tallyvane::testing {

/// The binary form of a list, by another writer; empty when that cannot read it.
inline std::string binaryOf(const std::string& xml) {
  plist_t root = nullptr;
  plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &root);
  char* binary = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(root, &binary, &length);
  const std::string list = binary == nullptr ? std::string() : std::string(binary, length);
  plist_to_bin_free(binary);
  plist_free(root);
  return list;
}

inline std::string bytes(std::initializer_list<int> values) {
  std::string result;
  for (const int value : values) result.push_back(static_cast<char>(value));
  return result;
}

/// A binary list of these objects, the first its root; offsets of four bytes, references of one.
inline std::string binaryList(const std::vector<std::string>& objects) {
  std::string list = "bplist00", offsets;
  const auto bigEndian = [](std::size_t number, int width) {
    std::string text;
    while (width-- > 0) text.push_back(static_cast<char>(number >> 8 * width));
    return text;
  };
  for (const std::string& object : objects) {
    offsets += bigEndian(list.size(), 4);
    list += object;
  }
  const std::size_t table = list.size();
  return list + offsets + bytes({0, 0, 0, 0, 0, 0, 4, 1}) + bigEndian(objects.size(), 8) + bigEndian(0, 8) +
         bigEndian(table, 8);
}

/// Arrays that each hold the next `width` times, down to `leaf`.
inline std::vector<std::string> chain(int length, int width, const std::string& leaf) {
  std::vector<std::string> objects;
  for (int i = 1; i <= length; ++i)
    objects.push_back(bytes({0xA0 + width}) + std::string(static_cast<std::size_t>(width), static_cast<char>(i)));
  objects.push_back(leaf);
  return objects;
}

/// A root that lists arrays each of which holds the one before it: no way down is long when it is first gone.
inline std::vector<std::string> tower(int height) {
  std::vector<std::string> objects = {bytes({0xAF, 0x10, height}), bytes({0xA0})};
  for (int i = 1; i <= height; ++i) objects.front() += static_cast<char>(i);
  for (int i = 1; i < height; ++i) objects.push_back(bytes({0xA1, i}));
  return objects;
}

}  // namespace tallyvane::testing
