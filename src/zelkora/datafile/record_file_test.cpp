// Tests of the record byte layout and of reading damaged records.
#include "zelkora/datafile/record_file.h"

#include <gtest/gtest.h>

#include "zelkora/platform/headless/memory_files.h"

namespace zelkora::datafile {
namespace {

std::string bytes(std::initializer_list<int> values) {
  std::string out;
  for (int v : values) out.push_back(static_cast<char>(v));
  return out;
}

std::unique_ptr<platform::DataFile> file_of(const std::string& content) {
  platform::headless::MemoryFileService files;
  files.put(u"f", content);
  std::error_code error;
  return files.open(u"f", platform::FileAccess::Read, error);
}

TEST(RecordLayout, RecordsAreWrittenByteForByte) {
  struct Case {
    int32_t id;
    Text member;
    std::string expected;
  };
  const Case cases[] = {
      {2000, u"12.5", bytes({0xD0, 0x07, 0, 0, 4, 0, '1', '2', '.', '5'})},
      {7, u"", bytes({7, 0, 0, 0, 0, 0})},
      {-1, u"A", bytes({0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 'A'})},
      {INT32_MIN, u"", bytes({0, 0, 0, 0x80, 0, 0})},
      // Code page 936: two bytes an ideograph, the steel-grade symbol in the
      // user-defined area, "?" for a character without a form.
      {0, u"中\uE002€😀", bytes({0, 0, 0, 0, 6, 0, 0xD6, 0xD0, 0xAA, 0xA3, 0x80, '?'})},
  };
  for (const Case& c : cases) {
    std::string out = "x";
    ASSERT_TRUE(append_record(out, c.id, c.member));
    EXPECT_EQ(out, "x" + c.expected) << c.id;

    std::string scratch;
    int32_t id = 0;
    Text member;
    auto file = file_of(c.expected);
    ASSERT_EQ(read_record(*file, scratch, id, member), ReadResult::Ok) << c.id;
    EXPECT_EQ(id, c.id);
    if (c.id == 0) {
      EXPECT_EQ(member, u"中\uE002€?");
    } else {
      EXPECT_EQ(member, c.member);
    }
  }
  std::string one;
  ASSERT_TRUE(append_text_record(one, u"ab"));
  EXPECT_EQ(one, bytes({2, 0, 'a', 'b'}));
}

TEST(RecordLayout, MembersBeyond65535BytesAreRefused) {
  struct Case {
    Text member;
    bool fits;
  };
  const Case cases[] = {
      {Text(65535, u'a'), true},
      {Text(65536, u'a'), false},
      {Text(32767, u'中') + u"a", true},
      {Text(32768, u'中'), false},
  };
  for (const Case& c : cases) {
    std::string out = "keep";
    EXPECT_EQ(append_record(out, 1, c.member), c.fits) << c.member.size();
    EXPECT_EQ(out.size(), c.fits ? 4 + 6 + 65535 : 4);
    out = "keep";
    EXPECT_EQ(append_text_record(out, c.member), c.fits);
    EXPECT_EQ(out.size(), c.fits ? 4 + 2 + 65535 : 4);
  }
}

TEST(RecordLayout, DamagedRecordsLeaveTheOutputsAndEndTheFile) {
  struct Case {
    const char* what;
    bool one_text;
    std::string content;
    ReadResult expected;
  };
  const Case cases[] = {
      {"empty file", false, "", ReadResult::End},
      {"empty file", true, "", ReadResult::End},
      {"one byte", false, bytes({5}), ReadResult::Damaged},
      {"one byte", true, bytes({5}), ReadResult::Damaged},
      {"short header", false, bytes({5, 0, 0, 0, 1}), ReadResult::Damaged},
      {"length past the end", false, bytes({5, 0, 0, 0, 0xFF, 0xFF, 'a'}), ReadResult::Damaged},
      {"length past the end", true, bytes({0xFF, 0xFF, 'a'}), ReadResult::Damaged},
      {"one byte short", false, bytes({5, 0, 0, 0, 3, 0, 'a', 'b'}), ReadResult::Damaged},
      {"one byte short", true, bytes({3, 0, 'a', 'b'}), ReadResult::Damaged},
  };
  for (const Case& c : cases) {
    auto file = file_of(c.content);
    std::string scratch;
    int32_t id = 42;
    Text member = u"before";
    const ReadResult result = c.one_text ? read_text_record(*file, scratch, member)
                                         : read_record(*file, scratch, id, member);
    EXPECT_EQ(result, c.expected) << c.what;
    EXPECT_EQ(id, 42) << c.what;
    EXPECT_EQ(member, u"before") << c.what;
    EXPECT_EQ(file->position(), file->size()) << c.what;
    EXPECT_LE(scratch.size(), c.content.size()) << c.what;
  }
}

TEST(RecordLayout, UndecodableBytesBecomeReplacementCharacters) {
  auto file = file_of(bytes({1, 0, 0, 0, 3, 0, 'a', 0xFF, 0xD6}));
  std::string scratch;
  int32_t id = 0;
  Text member;
  ASSERT_EQ(read_record(*file, scratch, id, member), ReadResult::Ok);
  EXPECT_EQ(member, u"a\uFFFD\uFFFD");
}

}  // namespace
}  // namespace zelkora::datafile
