#include "store/store_file.h"

#include <gtest/gtest.h>

#include "fuzz/targets.h"
#include "store/text_file.h"
#include "support/fake_code_pages.h"
#include "support/memory_file_system.h"
#include "support/messages.h"

namespace {

using namespace support;
using namespace store;
using Strings = std::vector<std::string>;

const std::string path = "pcSent.dat";
const std::string copy = path + ".unread-1";
const std::string header = "[PCSENT] \r\n";

class StoreFileTest : public testing::Test {
 protected:
  WriteResult rewrite() {
    std::vector<const SmsRecord*> records;
    for (const SmsRecord& record : table.records()) records.push_back(&record);
    return file.rewrite(records, table.records());
  }
  static std::string filed(StoreFile& in, const std::string& content) {
    const WriteResult result = in.append(message(content), LineBreaks::sent);
    EXPECT_TRUE(result.ok());
    return result.keptCopy;
  }

  MemoryFileSystem files;
  Latin1Page page;
  DoubleBytePage doubleByte;
  StoreFile file{files, page, path, "PCSENT"};
  FolderTable table;
};

TEST_F(StoreFileTest, ARewriteIsReadBackExactlyInTheSmallestEncoding) {
  // One byte a character, beyond the code page, and in it again.
  const std::pair<Strings, std::string> cases[] = {
      {{}, header},
      {{" café ", ""}, header + lines(" caf\xE9 ") + lines("")},
      {{"€", "é"}, byteOrderMark + header + lines("€") + lines("é")},
      {{"é"}, header + lines("\xE9")}};
  ASSERT_TRUE(file.read(table).ok());
  for (const auto& [texts, bytes] : cases) {
    table.clear();
    for (const std::string& text : texts) table.append(message(text));
    for (int time = 0; time < 2; ++time) {
      ASSERT_TRUE(rewrite().ok());
      EXPECT_EQ(files.bytes(path), bytes);
      EXPECT_EQ(files.paths(), std::set{path});
      ASSERT_TRUE(file.read(table).lossless);
      EXPECT_EQ(contents(table), texts);
    }
    // What is filed behind it is in the encoding that the rewrite has left.
    filed(file, "é");
    EXPECT_EQ(files.bytes(path), bytes + lines(bytes.starts_with('[') ? "\xE9" : "é", ""));
    ASSERT_TRUE(file.read(table).ok());
  }
}

// What a file becomes when one message is filed in it, and whether its bytes are put aside first.
TEST_F(StoreFileTest, FilingInEveryKindOfFile) {
  const std::string full = header + lines("\xE9", "3");
  const struct {
    const char* what;
    std::string before;
    std::string content;
    std::string after;
    bool copied = false;
    bool doubleByte = false;
  } cases[] = {
      {"no file", "(missing)", "a\r\nb\nc\rd", header + lines("a b cd", "")},
      {"an empty file", "", "hi", header + lines("hi", "")},
      {"a byte-order mark alone", byteOrderMark, "é", byteOrderMark + header + lines("é", "")},
      {"the code page holds it", full, "é", full + lines("\xE9", "")},
      {"the code page does not", full, "€", byteOrderMark + header + lines("é", "3") + lines("€", "")},
      {"an equals sign does not misalign", header + lines("1+1=2"), "hi",
       header + lines("1+1=2") + lines("hi", "")},
      {"typed by hand", "[pcsent]\nContent=a\nPhone=\nTime=\nIndex=\n", "hi",
       "[pcsent]\nContent=a\nPhone=\nTime=\nIndex=\n" + lines("hi", "")},
      {"broken off", header + "Content = a \r\nPhone = 42", "hi",
       header + "Content = a \r\nPhone = 42 \r\nTime = 42 \r\nIndex = 42 \r\n" + lines("hi", "")},
      {"no store at all", "holiday pictures", "hi", header + lines("hi", ""), true},
      {"bytes that the page does not define", header + lines("\x81= \xFF"), "€",
       byteOrderMark + header + lines("갍 �") + lines("€", ""), true, true},
  };
  for (const auto& c : cases) {
    for (const bool known : {false, true}) {
      SCOPED_TRACE(std::string(c.what) + (known ? ", read before" : ""));
      for (const std::string& old : files.paths()) files.remove(old);
      if (c.before != "(missing)") files.put(path, c.before);
      StoreFile store(files, c.doubleByte ? static_cast<const text::CodePage&>(doubleByte) : page, path,
                      "PCSENT");
      if (known) {
        ASSERT_TRUE(store.read(table).ok());
      }
      EXPECT_EQ(filed(store, c.content), c.copied ? copy : "");
      EXPECT_EQ(files.bytes(path), c.after);
      EXPECT_EQ(files.bytes(copy), c.copied ? c.before : "(missing)");
      // Whatever it was, it is in order now and takes the next one as it is.
      EXPECT_EQ(filed(store, "next"), "");
      EXPECT_EQ(files.bytes(path), c.after + lines("next", ""));
    }
  }
}

TEST_F(StoreFileTest, WhatNoRecordHoldsIsPutAsideBeforeARewrite) {
  const std::string first = header + lines("1+1=2", "3");
  files.put(path, first);
  files.put(copy, "an earlier copy");
  ASSERT_FALSE(file.read(table).lossless);
  EXPECT_EQ(rewrite().keptCopy, path + ".unread-2");
  EXPECT_EQ(files.bytes(path), header + lines("2", "3"));
  EXPECT_EQ(files.bytes(copy), "an earlier copy");
  EXPECT_EQ(files.bytes(path + ".unread-2"), first);
  // The records hold this one in full, so rewriting it once more loses nothing.
  table[0].Content = "a=b";
  EXPECT_EQ(rewrite().keptCopy, "");
  EXPECT_EQ(rewrite().keptCopy, "");
  // Filed since, and not read: the caller's records lack it.
  filed(file, "new");
  EXPECT_EQ(rewrite().keptCopy, path + ".unread-3");

  // Changed by something else since it was read: told by time alone, and looked at for values only.
  files.put(path, header + lines("a", "1") + lines("b", "2"));
  ASSERT_TRUE(file.read(table).lossless);
  const std::pair<std::string, bool> changes[] = {{"[pcsent]\n" + lines("a", "1") + lines("b", "2"), false},
                                                  {header + lines("b", "2"), false},
                                                  {header + lines("a", "1") + lines("c", "2"), true},
                                                  {header + lines("b", "2") + lines("a", "1"), true},
                                                  {header, false}};
  for (const auto& [bytes, copied] : changes) {
    files.put(path, bytes);
    const std::string kept = rewrite().keptCopy;
    EXPECT_EQ(!kept.empty(), copied) << bytes;
    if (copied) {
      EXPECT_EQ(files.bytes(kept), bytes);
    }
  }
  // The same bytes are not kept twice.
  files.put(path, first);
  EXPECT_EQ(rewrite().keptCopy, path + ".unread-2");
  // Somebody else's removal is no change that loses anything.
  files.remove(path);
  EXPECT_EQ(rewrite().keptCopy, "");
}

TEST_F(StoreFileTest, IsNotRewrittenBeforeItHasBeenRead) {
  const std::string before = header + lines("a", "3");
  files.put(path, before);
  files.lock(path);
  table.append(message("left alone"));
  const auto expectRefusal = [&](WriteResult::Outcome outcome) {
    const WriteResult result = rewrite();
    EXPECT_EQ(result.outcome, outcome);
    EXPECT_EQ(result.file, path);
    EXPECT_EQ(files.bytes(path), before);
  };
  EXPECT_EQ(file.read(table).status.code, MemoryFileSystem::lockedCode);
  EXPECT_EQ(contents(table), Strings{"left alone"});
  EXPECT_EQ(file.append(message("b"), LineBreaks::sent).code, MemoryFileSystem::lockedCode);
  files.unlock(path);
  expectRefusal(WriteResult::Outcome::notRead);
  ASSERT_TRUE(file.read(table).ok());
  // Changed by somebody who keeps it locked: what it holds cannot be looked at.
  files.put(path, before);
  files.lock(path);
  expectRefusal(WriteResult::Outcome::failed);
  // A failed read after a good one closes the store again.
  EXPECT_FALSE(file.read(table).ok());
  files.unlock(path);
  expectRefusal(WriteResult::Outcome::notRead);
}

TEST(StoreFileDamage, BrokenOffAtEveryByte) {
  const std::string full = byteOrderMark + "[PCINBOX] \r\n" + lines("caf\xC3\xA9", "1") + lines("", "2");
  for (std::size_t start : {std::size_t{0}, byteOrderMark.size()})
    for (std::size_t end = start; end <= full.size(); ++end)
      for (const char* filed : {"\n", "new\n"}) fuzz::store(filed + full.substr(start, end - start));
}

TEST_F(StoreFileTest, TextFilesGrowAtTheirEnd) {
  const SmsRecord first = message("a\r\nb", 7);
  const SmsRecord second = message("é");
  const SmsRecord wide = message("€", 1);
  const std::string two = lines("a  b", "7") + lines("\xE9");
  const std::tuple<std::string, std::vector<const SmsRecord*>, std::string> cases[] = {
      {"(missing)", {&first, &second}, two},
      {two, {&first, &second}, two + two},
      {"no line end", {&second}, "no line end\r\n" + lines("\xE9")},
      {"caf\xE9 =\r\n", {&wide}, byteOrderMark + "café =\r\n" + lines("€", "1")},
      {byteOrderMark, {&second}, byteOrderMark + lines("é")}};
  for (const auto& [before, records, after] : cases) {
    files.remove("out.txt");
    if (before != "(missing)") files.put("out.txt", before);
    EXPECT_TRUE(appendText(files, page, "out.txt", records).ok());
    EXPECT_EQ(files.bytes("out.txt"), after);
  }
}

}  // namespace
