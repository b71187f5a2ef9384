#include "support/Compression.h"

namespace tallyvane::testing {
namespace {

TEST(Compression, EveryFormComesBackWholeInPiecesOfAnySize) {
  for (const std::string& text : {std::string(), std::string("x"), std::string(300'000, 'x'), noise(20'000)}) {
    const std::string ours = *QMDataCompressor::compressData(text, ContentCoding::gzip);
    const std::string deflated = *QMDataCompressor::compressData(text, ContentCoding::deflate);
    for (const std::string& packed :
         {ours, ours + ours, deflated, packedBy(31, text), packedBy(15, text), packedBy(-15, text)}) {
      const std::string expected = packed.size() == 2 * ours.size() ? text + text : text;
      for (const std::size_t step : {std::size_t{1}, std::size_t{1000}, packed.size()}) {
        const Result<std::string> out = unpackedInSteps(packed, step);
        EXPECT_TRUE(out && *out == expected) << text.size() << " in " << step << ": " << out.error();
      }
      EXPECT_FALSE(unpackedInSteps(std::string_view(packed).substr(0, packed.size() - 1), 1000));
    }
  }
  EXPECT_FALSE(QMDataDecompressor::uncompressData("no packed text"));
  EXPECT_FALSE(
      QMDataDecompressor::uncompressData(packedBy(31, std::string(QMDataDecompressor::maximumBytes + 1, ' '))));
}

TEST(Compression, AFileIsPackedIntoAnother) {
  InMemoryFileStore files;
  files.content["/big"] = noise(200'000);
  const std::string temporary = *files.makeTemporary();
  const Result<std::uint64_t> size =
      QMDataCompressor::compressDataFromFileToFile(files, "/big", temporary, ContentCoding::gzip);
  ASSERT_TRUE(size);
  EXPECT_EQ(*size, files.content[temporary].size());
  EXPECT_EQ(*QMDataDecompressor::uncompressData(files.content[temporary]), files.content["/big"]);
}

TEST(Compression, AStreamOfABodyGivesPiecesAndStartsAnew) {
  InMemoryFileStore files;
  files.content["/body"] = "0123456789";
  for (QMInputStream stream : {QMInputStream::inputStreamWithData("0123456789"),
                               QMInputStream::inputStreamWithFileAtPath(files, "/body", 10)}) {
    EXPECT_EQ(*stream.read(100), "0123456789");
    EXPECT_EQ(*stream.read(100), "");
    stream.rewind();
    EXPECT_EQ(*stream.read(4), "0123");
    EXPECT_EQ(*stream.read(100), "456789");
  }
  QMInputStream shorter = QMInputStream::inputStreamWithFileAtPath(files, "/body", 11);
  EXPECT_EQ(*shorter.read(100), "0123456789");
  EXPECT_FALSE(shorter.read(100));
}

}  // namespace
}  // namespace tallyvane::testing
