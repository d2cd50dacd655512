#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "store/store_file.h"
#include "store/text_file.h"
#include "support/fake_code_pages.h"
#include "support/memory_file_system.h"

// Every change of a file, with a fault in every single step of it.
namespace {

using store::FolderTable;
using store::LineBreaks;
using store::SmsRecord;
using store::StoreFile;
using store::WriteResult;
using support::MemoryFileSystem;
using Fault = MemoryFileSystem::Fault;

const std::string path = "pcDraft.dat";
const std::string header = "[PCDRAFT] \r\n";
const std::string group = "Content = \xE9 \r\nPhone = 12 \r\nTime = now \r\nIndex = 3 \r\n";
const std::string brokenOff = header + group + "Content = ";
const SmsRecord plain{.Content = "plain", .Time = "now", .Phone = "12", .Index = 1};
const SmsRecord large{.Content = std::string(200'000, 'l'), .Time = "now", .Phone = "12", .Index = 1};
const SmsRecord wide{.Content = "\xE2\x82\xAC", .Time = "now", .Phone = "12", .Index = 1};

struct Store {
  MemoryFileSystem files;
  support::Latin1Page page;
  StoreFile file{files, page, path, "PCDRAFT"};
  FolderTable table;
};

struct Change {
  const char* what;
  std::string before;  // "-" for a missing file
  bool copied;
  std::function<WriteResult(Store&)> run;
};

WriteResult file(Store& store, const SmsRecord& record) {
  return store.file.append(record, LineBreaks::sent);
}
WriteResult rewrite(Store& store) {
  return store.file.rewrite(std::array{plain, wide});
}
WriteResult save(Store& store, const SmsRecord& record) {
  return appendText(store.files, store.page, path, std::array{record});
}

const std::vector<Change> changes{
    {"file in a whole store", header + group, false, [](Store& store) { return file(store, plain); }},
    {"file in a missing store", "-", false, [](Store& store) { return file(store, plain); }},
    {"file in an empty store", "", false, [](Store& store) { return file(store, plain); }},
    {"file in a store broken off", brokenOff, true, [](Store& store) { return file(store, plain); }},
    {"file what the code page lacks", header + group, false, [](Store& store) { return file(store, wide); }},
    {"rewrite a whole store", header + group, false, rewrite},
    {"rewrite a missing store", "-", false, rewrite},
    {"rewrite a store broken off", brokenOff, true, rewrite},
    // The code page turns out to lack a character when much has been written already.
    {"rewrite a large store", header + group, false,
     [](Store& store) {
       return store.file.rewrite(std::array{large, large, large, wide});
     }},
    {"save to a text file", group, false, [](Store& store) { return save(store, plain); }},
    {"save to a new text file", "-", false, [](Store& store) { return save(store, plain); }},
    {"save what the code page lacks", group, false, [](Store& store) { return save(store, wide); }},
};

void prepare(Store& store, const Change& change) {
  if (change.before != "-") store.files.put(path, change.before);
  ASSERT_TRUE(store.file.read(store.table).ok());
  store.files.forgetSteps();
}

std::string found(const Store& store) {
  return store.files.bytes(path).value_or("-");
}

void expectCopy(const Store& store, const Change& change) {
  EXPECT_EQ(store.files.bytes(path + ".unread-1").value_or("-"), change.copied ? change.before : "-");
}

struct Outcome {
  std::string after;
  std::size_t steps;
};

Outcome withoutFault(const Change& change) {
  Store store;
  prepare(store, change);
  EXPECT_TRUE(change.run(store).ok());
  EXPECT_NE(found(store), change.before);
  expectCopy(store, change);
  return {found(store), store.files.steps().size()};
}

TEST(StoreFaultTest, AFailedStepLeavesTheOldBytesAndCanBeRepeated) {
  for (const Change& change : changes) {
    const Outcome good = withoutFault(change);
    ASSERT_GE(good.steps, 5u) << change.what;
    for (std::size_t step = 0; step < good.steps; ++step) {
      Store store;
      prepare(store, change);
      const std::vector<std::string> pathsBefore = store.files.paths();
      store.files.inject(Fault::fail, step);
      const WriteResult result = change.run(store);
      SCOPED_TRACE(change.what + (": " + store.files.steps()[step]));
      if (result.ok()) {
        // Only closing after the flush may go wrong without harm.
        EXPECT_EQ(store.files.steps()[step], "close " + path);
        EXPECT_EQ(found(store), good.after);
        continue;
      }
      EXPECT_EQ(result.outcome, WriteResult::Outcome::failed);
      EXPECT_EQ(result.status.code, MemoryFileSystem::faultCode);
      EXPECT_TRUE(result.file.starts_with(path));
      EXPECT_EQ(result.keptCopy, "");
      EXPECT_EQ(found(store), change.before);
      EXPECT_EQ(store.files.paths(), pathsBefore);
      EXPECT_TRUE(change.run(store).ok());
      EXPECT_EQ(found(store), good.after);
      expectCopy(store, change);
    }
  }
}

TEST(StoreFaultTest, AProgramEndedAtAnyPointLeavesAllOldOrAllNewBytes) {
  for (const Change& change : changes) {
    const Outcome good = withoutFault(change);
    bool sawOld = false;
    bool sawNew = false;
    for (std::size_t step = 0; step < good.steps; ++step) {
      for (const Fault fault : {Fault::killBefore, Fault::killAfter}) {
        Store store;
        prepare(store, change);
        store.files.inject(fault, step);
        change.run(store);
        SCOPED_TRACE(change.what + (": " + store.files.steps()[step]));
        store.files.restart();
        const bool isNew = found(store) == good.after;
        EXPECT_TRUE(isNew || found(store) == change.before) << found(store);
        (isNew ? sawNew : sawOld) = true;
        if (isNew) expectCopy(store, change);

        // The next start finds its way, whatever lies beside the store.
        StoreFile next(store.files, store.page, path, "PCDRAFT");
        ASSERT_TRUE(next.read(store.table).ok());
        EXPECT_TRUE(next.rewrite(store.table.records()).ok());
        // And nothing piles up there: what was put aside is put aside once.
        for (const std::string& name : store.files.paths())
          EXPECT_TRUE(name == path || name == path + ".unread-1") << name;
      }
    }
    EXPECT_TRUE(sawOld && sawNew) << change.what;
  }
}

TEST(StoreFaultTest, AHalfWrittenMessageThatCouldNotBeCutOffHarmsNoOther) {
  Store store;
  prepare(store, changes[0]);
  store.files.inject(Fault::fail, 2);  // the write
  store.files.inject(Fault::fail, 3);  // cutting back
  ASSERT_FALSE(file(store, plain).ok());
  const std::string damaged = found(store);
  ASSERT_GT(damaged.size(), changes[0].before.size());

  EXPECT_EQ(file(store, plain).keptCopy, path + ".unread-1");
  EXPECT_EQ(store.files.bytes(path + ".unread-1"), damaged);
  ASSERT_TRUE(store.file.read(store.table).whole);
  ASSERT_EQ(store.table.size(), 3u);
  EXPECT_EQ(store.table[0].Content, "\xC3\xA9");
  EXPECT_EQ(store.table[2].Content, "plain");
}

TEST(StoreFaultTest, AFailedReadIsNotAnEmptyStore) {
  for (const std::size_t step : {0u, 1u}) {
    Store store;
    store.files.put(path, header + group);
    store.files.inject(Fault::fail, step);
    EXPECT_TRUE(store.file.read(store.table).status.failed());
    EXPECT_EQ(store.file.rewrite({}).outcome, WriteResult::Outcome::notRead);
    EXPECT_EQ(found(store), header + group);
  }
}

}  // namespace
