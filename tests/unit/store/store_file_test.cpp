#include "store/store_file.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "store/store_format.h"
#include "store/text_file.h"
#include "support/fake_code_pages.h"
#include "support/memory_file_system.h"

namespace {

using store::FolderTable;
using store::LineBreaks;
using store::SmsRecord;
using store::StoreFile;
using store::WriteResult;
using Strings = std::vector<std::string>;

const std::string path = "pcSent.dat";
const std::string copy = path + ".unread-1";
const std::string header = "[PCSENT] \r\n";
const std::string mark = "\xEF\xBB\xBF";
const std::string euro = "\xE2\x82\xAC";

std::string group(const std::string& content, const std::string& index) {
  return "Content = " + content + " \r\nPhone = 12 \r\nTime = 2005/01/02  09:05:07 \r\nIndex = " + index +
         " \r\n";
}

SmsRecord message(const std::string& content, std::int32_t index = 0) {
  return {.Content = content, .Time = "2005/01/02  09:05:07", .Phone = "12", .Index = index};
}

Strings contents(const FolderTable& table) {
  Strings texts;
  for (const SmsRecord& record : table.records()) texts.push_back(record.Content);
  return texts;
}

class StoreFileTest : public testing::Test {
 protected:
  std::string bytes(const std::string& of = path) const { return files.bytes(of).value_or("(missing)"); }

  support::MemoryFileSystem files;
  support::Latin1Page page;
  StoreFile file{files, page, path, "PCSENT"};
  FolderTable table;
};

TEST_F(StoreFileTest, ARewriteIsOneWriteAndOneReplacement) {
  ASSERT_TRUE(file.read(table).ok());
  table.append(message(" caf\xC3\xA9\r\n ", 7));
  table.append(message("", -1));
  files.forgetSteps();
  ASSERT_TRUE(file.rewrite(table.records()).ok());
  EXPECT_EQ(bytes(), header + group(" caf\xE9   ", "7") + group("", "-1"));
  EXPECT_EQ(files.steps(), (Strings{"open pcSent.dat", "create pcSent.dat.new", "write pcSent.dat.new",
                                    "flush pcSent.dat.new", "close pcSent.dat.new", "replace pcSent.dat"}));
  ASSERT_TRUE(file.read(table).whole);
  EXPECT_EQ(contents(table), (Strings{" caf\xC3\xA9   ", ""}));
  EXPECT_EQ(table[1].Index, -1);

  // Read and written again, the bytes stay as they are; the last message gone, the header remains.
  ASSERT_TRUE(file.rewrite(table.records()).ok());
  EXPECT_EQ(bytes(), header + group(" caf\xE9   ", "7") + group("", "-1"));
  ASSERT_TRUE(file.rewrite({}).ok());
  EXPECT_EQ(bytes(), header);
  EXPECT_EQ(files.paths(), Strings{path});
}

TEST_F(StoreFileTest, FilingIsOneWriteAtTheEnd) {
  ASSERT_TRUE(file.read(table).ok());
  ASSERT_TRUE(file.append(message("a\r\nb", 5), LineBreaks::stored).ok());
  ASSERT_EQ(bytes(), header + group("a  b", ""));
  files.forgetSteps();
  ASSERT_TRUE(file.append(message("a\r\nb", 5), LineBreaks::sent).ok());
  EXPECT_EQ(bytes(), header + group("a  b", "") + group("a b", ""));
  EXPECT_EQ(files.steps(), (Strings{"open pcSent.dat", "read pcSent.dat", "write pcSent.dat",
                                    "flush pcSent.dat", "close pcSent.dat"}));
  ASSERT_TRUE(file.read(table).whole);
  EXPECT_EQ(contents(table), (Strings{"a  b", "a b"}));
  EXPECT_EQ(table[0].Index, 0);
}

// What a file becomes when one message is filed in it, and whether its bytes are put aside first.
TEST_F(StoreFileTest, FilingInEveryKindOfFile) {
  const std::string full = header + group("\xE9", "3");
  const struct {
    const char* what;
    std::string before;
    std::string content;
    std::string after;
    bool copied;
  } cases[] = {
      {"an empty file", "", "hi", header + group("hi", ""), false},
      {"an empty file, for the mark", "", euro, mark + header + group(euro, ""), false},
      {"a mark alone", mark, "\xC3\xA9", mark + header + group("\xC3\xA9", ""), false},
      {"the code page holds it", full, "\xC3\xA9", full + group("\xE9", ""), false},
      {"the code page does not", full, euro, mark + header + group("\xC3\xA9", "3") + group(euro, ""), false},
      {"a marked file", mark + header + group(euro, ""), "\xC3\xA9",
       mark + header + group(euro, "") + group("\xC3\xA9", ""), false},
      {"an equals sign does not misalign", header + group("1+1=2", "3"), "hi",
       header + group("1+1=2", "3") + group("hi", ""), false},
      {"nor is it lost by the change to UTF-8", header + group("1+1=2", "3"), euro,
       mark + header + group("1+1=2", "3") + group(euro, ""), false},
      {"broken off", header + "Content = a \r\nPhone = 42", "hi",
       header + "Content = a \r\nPhone = 42 \r\nTime = 42 \r\nIndex = 42 \r\n" + group("hi", ""), true},
      {"no store at all", "holiday pictures", "hi", header + group("hi", ""), true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    files.remove(copy);
    files.put(path, c.before);
    ASSERT_TRUE(file.read(table).ok());
    const WriteResult result = file.append(message(c.content), LineBreaks::sent);
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(bytes(), c.after);
    EXPECT_EQ(result.keptCopy, c.copied ? copy : "");
    EXPECT_EQ(bytes(copy), c.copied ? c.before : "(missing)");
    // Whatever it was, it is in order now and takes the next one as it is.
    EXPECT_EQ(file.append(message("next"), LineBreaks::sent).keptCopy, "");
    EXPECT_EQ(bytes(), c.after + group("next", ""));
  }
}

TEST_F(StoreFileTest, ConvertingBytesThatTheCodePageDoesNotDefineKeepsACopy) {
  const support::DoubleBytePage doubleByte;
  StoreFile korean(files, doubleByte, path, "PCSENT");
  const std::string before = header + group("\x81= \xFF", "3");
  files.put(path, before);
  ASSERT_FALSE(korean.read(table).whole);
  EXPECT_EQ(korean.append(message(euro), LineBreaks::sent).keptCopy, copy);
  EXPECT_EQ(bytes(), mark + header + group("\xEA\xB0\x8D \xEF\xBF\xBD", "3") + group(euro, ""));
  EXPECT_EQ(bytes(copy), before);
}

TEST_F(StoreFileTest, ARewriteTakesTheMarkOnlyWhereItIsNeeded) {
  ASSERT_TRUE(file.read(table).ok());
  table.append(message(euro, 1));
  table.append(message("\xC3\xA9", 2));
  ASSERT_TRUE(file.rewrite(table.records()).ok());
  EXPECT_EQ(bytes(), mark + header + group(euro, "1") + group("\xC3\xA9", "2"));
  ASSERT_TRUE(file.read(table).whole);
  EXPECT_EQ(contents(table), (Strings{euro, "\xC3\xA9"}));
  table.erase(0);
  ASSERT_TRUE(file.rewrite(table.records()).ok());
  EXPECT_EQ(bytes(), header + group("\xE9", "2"));
}

// However it is cut on its way to the file: each kind of message among many plain ones, and one that is
// larger than what is written at once.
TEST_F(StoreFileTest, ALargeStoreIsOneText) {
  for (const std::string& odd : {std::string("plain"), std::string("two\nlines"), std::string("caf\xC3\xA9"),
                                 euro, std::string(300'000, 'l'), std::string(300'000, 'l') + euro}) {
    SCOPED_TRACE(odd.substr(0, 10));
    FolderTable large;
    std::string text = header;
    for (int i = -1000; i < 3000; ++i) {
      const bool isOdd = i % 900 == 899;
      large.append(
          message(isOdd ? odd : std::string(static_cast<std::size_t>(i + 1000) % 300, 'm'), i * 1000));
      appendGroup(text, large[large.size() - 1], LineBreaks::stored, store::IndexLine::number);
    }
    ASSERT_TRUE(file.read(table).ok());
    const std::span<const SmsRecord> records = large.records();
    ASSERT_TRUE(file.rewrite(records.first(2500), records.subspan(2500)).ok());
    EXPECT_TRUE(bytes() == store::fileBytes(text, page));
    // It is known to the byte: nothing has to be put aside.
    ASSERT_TRUE(file.rewrite(records).ok());
    EXPECT_EQ(files.paths(), Strings{path});
  }
}

TEST_F(StoreFileTest, WhatWasNotReadIsPutAsideBeforeARewrite) {
  const std::string first = header + group("1+1=2", "3");
  files.put(path, first);
  files.put(copy, "an earlier copy");
  ASSERT_FALSE(file.read(table).whole);
  EXPECT_EQ(contents(table), Strings{"2"});
  EXPECT_EQ(file.rewrite(table.records()).keptCopy, path + ".unread-2");
  EXPECT_EQ(bytes(), header + group("2", "3"));
  EXPECT_EQ(bytes(copy), "an earlier copy");
  EXPECT_EQ(bytes(path + ".unread-2"), first);

  // The records themselves hold this one in full, so rewriting it once more loses nothing.
  table[0].Content = "a=b";
  EXPECT_EQ(file.rewrite(table.records()).keptCopy, "");
  EXPECT_EQ(file.rewrite(table.records()).keptCopy, "");
  // Filed since, and not read: the caller's records lack it.
  ASSERT_TRUE(file.append(message("new"), LineBreaks::sent).ok());
  EXPECT_EQ(file.rewrite(table.records()).keptCopy, path + ".unread-3");
  // Changed by something else since it was read.
  ASSERT_TRUE(file.read(table).ok());
  files.put(path, header + group("from elsewhere", "3"));
  EXPECT_EQ(file.rewrite(table.records()).keptCopy, path + ".unread-4");
  EXPECT_EQ(bytes(path + ".unread-4"), header + group("from elsewhere", "3"));
  // Emptied by something else: nothing to keep.
  files.put(path, header);
  EXPECT_EQ(file.rewrite(table.records()).keptCopy, "");
}

TEST_F(StoreFileTest, IsNotRewrittenBeforeItHasBeenRead) {
  const std::string before = header + group("a", "3");
  files.put(path, before);
  files.lock(path);
  table.append(message("left alone"));
  const auto expectRefusal = [&] {
    const WriteResult result = file.rewrite({});
    EXPECT_EQ(result.outcome, WriteResult::Outcome::notRead);
    EXPECT_EQ(result.file, path);
    EXPECT_EQ(bytes(), before);
  };
  expectRefusal();
  const store::ReadResult locked = file.read(table);
  EXPECT_TRUE(locked.status.failed());
  EXPECT_EQ(locked.status.code, support::MemoryFileSystem::lockedCode);
  EXPECT_EQ(contents(table), Strings{"left alone"});
  EXPECT_EQ(file.append(message("b"), LineBreaks::sent).status.code, support::MemoryFileSystem::lockedCode);
  files.unlock(path);
  expectRefusal();
  ASSERT_TRUE(file.read(table).ok());
  // Nor once the caller has given up what it had read.
  file.forget();
  table.clear();
  expectRefusal();
  // Filing takes nothing away, so it needs no reading before.
  ASSERT_TRUE(file.append(message("b"), LineBreaks::sent).ok());
  EXPECT_EQ(file.rewrite({}).outcome, WriteResult::Outcome::notRead);
  ASSERT_TRUE(file.read(table).ok());

  // Locked only later: the write fails and says why.
  files.lock(path);
  for (const WriteResult& result : {file.rewrite({}), file.append(message("c"), LineBreaks::sent)}) {
    EXPECT_EQ(result.outcome, WriteResult::Outcome::failed);
    EXPECT_EQ(result.status.code, support::MemoryFileSystem::lockedCode);
  }
  EXPECT_EQ(bytes(), before + group("b", ""));
  // A failed read after a good one closes the store again.
  EXPECT_FALSE(file.read(table).ok());
  files.unlock(path);
  EXPECT_EQ(file.rewrite({}).outcome, WriteResult::Outcome::notRead);
}

// Texts as a rewrite makes them.
Strings unbroken(Strings texts) {
  for (std::string& text : texts) {
    for (char& c : text) c = c == '\r' || c == '\0' ? ' ' : c;
  }
  return texts;
}

// After filing and rewriting, everything that was read is still there, and the former bytes are in front of
// the file or in the copy.
void expectNothingLost(const std::string& before, const text::CodePage& page) {
  support::MemoryFileSystem files;
  files.put(path, before);
  StoreFile file(files, page, path, "PCSENT");
  FolderTable table;
  const bool whole = file.read(table).whole;
  Strings expected = unbroken(contents(table));
  FolderTable again;
  if (whole) {
    ASSERT_TRUE(file.rewrite(table.records()).ok());
    ASSERT_EQ(files.paths(), Strings{path});
    ASSERT_TRUE(file.read(again).whole);
    ASSERT_EQ(contents(again), expected);
    files.put(path, before);
    ASSERT_TRUE(file.read(table).ok());
  }
  expected.push_back("new");

  ASSERT_TRUE(file.append(message("new"), LineBreaks::sent).ok());
  const auto isKept = [&] {
    return files.bytes(path)->starts_with(before) || files.bytes(copy).value_or("").starts_with(before);
  };
  ASSERT_TRUE(whole ? files.bytes(path)->starts_with(before) : isKept());
  ASSERT_TRUE(file.read(again).ok());
  ASSERT_EQ(unbroken(contents(again)), expected);
  ASSERT_TRUE(file.rewrite(again.records()).ok());
  ASSERT_TRUE(whole || isKept());
  ASSERT_TRUE(file.read(again).ok());
  ASSERT_EQ(contents(again), expected);
}

TEST(StoreFileDamageTest, BrokenOffAtEveryByte) {
  const support::Latin1Page page;
  for (const std::string& start : {std::string(), mark}) {
    std::set<std::size_t> wholeLengths{0, start.size()};
    std::string full = start;
    for (const std::string& part : {header, group("caf\xC3\xA9", "1"), group("", "2")}) {
      full += part;
      wholeLengths.insert(full.size());
    }
    for (std::size_t length = 0; length <= full.size(); ++length) {
      SCOPED_TRACE(length);
      const std::string bytes = full.substr(0, length);
      FolderTable records;
      EXPECT_EQ(store::readStore(bytes, "PCSENT", page, records).whole, wholeLengths.contains(length));
      expectNothingLost(bytes, page);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(StoreFileDamageTest, Rubbish) {
  const support::Latin1Page latin1;
  const support::DoubleBytePage doubleByte;
  const std::array<std::string, 16> pieces{
      "[PCSENT] \r\n",      "[",    "]",    "\r\n",         "\n", "\r", "=", " ", "Content = ", "Index = 3 ",
      std::string(1, '\0'), "\x81", "\xFF", "\xEF\xBB\xBF", ";",  "x"};
  std::mt19937 random(20050102);
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(round);
    std::string bytes = random() % 4 == 0 ? "" : header;
    for (auto count = random() % 40; count > 0; --count) {
      bytes +=
          random() % 8 == 0 ? std::string(1, static_cast<char>(random())) : pieces[random() % pieces.size()];
    }
    expectNothingLost(bytes, round % 2 == 0 ? static_cast<const text::CodePage&>(latin1) : doubleByte);
    if (testing::Test::HasFatalFailure()) FAIL() << testing::PrintToString(bytes);
  }
}

TEST_F(StoreFileTest, FiftyMegabytes) {
  std::string big = header;
  for (int i = 0; i < 100'000; ++i) big += group(std::string(430, 'x'), std::to_string(i));
  big += group("the last", "100000");
  ASSERT_GT(big.size(), 50'000'000u);
  files.put(path, big);
  ASSERT_TRUE(file.read(table).whole);
  ASSERT_EQ(table.size(), 100'001u);
  EXPECT_EQ(table[100'000], message("the last", 100'000));
  files.remove(path);
  ASSERT_TRUE(file.rewrite(table.records()).ok());
  EXPECT_TRUE(bytes() == big);
}

TEST_F(StoreFileTest, TextFilesGrowAtTheirEnd) {
  const std::array<SmsRecord, 2> two{message("a\r\nb", 7), message("\xC3\xA9", 0)};
  const std::array<SmsRecord, 1> wide{message(euro, 1)};
  const std::string lines = group("a  b", "7") + group("\xE9", "0");
  ASSERT_TRUE(appendText(files, page, "out.txt", two).ok());
  EXPECT_EQ(bytes("out.txt"), lines);
  files.forgetSteps();
  ASSERT_TRUE(appendText(files, page, "out.txt", two).ok());
  EXPECT_EQ(bytes("out.txt"), lines + lines);
  EXPECT_EQ(files.steps(),
            (Strings{"open out.txt", "read out.txt", "write out.txt", "flush out.txt", "close out.txt"}));

  files.put("out.txt", "caf\xE9 =\r\n");
  ASSERT_TRUE(appendText(files, page, "out.txt", wide).ok());
  EXPECT_EQ(bytes("out.txt"), mark + "caf\xC3\xA9 =\r\n" + group(euro, "1"));
  ASSERT_TRUE(appendText(files, page, "out.txt", two).ok());
  EXPECT_TRUE(bytes("out.txt").ends_with(group("\xC3\xA9", "0")));
  files.put("empty.txt", "");
  for (const char* name : {"new.txt", "empty.txt"}) {
    ASSERT_TRUE(appendText(files, page, name, wide).ok());
    EXPECT_EQ(bytes(name), mark + group(euro, "1"));
  }
}

}  // namespace
