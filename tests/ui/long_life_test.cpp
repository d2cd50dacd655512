// Thousands of random things that a person can do, each compared with a model of the folders, and what the
// program holds of the system's at the end compared with what it held before.
//
// QUILLET_SEED and QUILLET_ACTIONS in the environment choose another run and a longer one.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <random>
#include <sstream>

#include "dialog_visit.h"
#include "dialogs/compose_state.h"
#include "folder_model.h"
#include "framework/text.h"
#include "list/list_state.h"
#include "resource_use.h"
#include "resources/resource_ids.h"
#include "running_app.h"
#include "store/folder_state.h"
#include "store/time_stamp.h"

namespace {

using framework::toWide;
using framework::windowText;
using model::Message;
using Steps = std::vector<DialogVisit::Step>;

constexpr char unreachable[] = "5550199";
constexpr char silent[] = "Can not connect,Please Check Connection";
constexpr const char* stores[] = {"pcInbox.dat", "pcSent.dat", "pcDraft.dat"};

unsigned fromEnvironment(const char* name, unsigned otherwise) {
  const char* const value = std::getenv(name);
  return value ? static_cast<unsigned>(std::strtoul(value, nullptr, 10)) : otherwise;
}

std::string narrowed(const std::string& utf8) {
  std::string bytes;
  framework::toAnsi(toWide(utf8), bytes);
  return bytes;
}

std::string oneLineEnds(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
  std::replace(text.begin(), text.end(), '\r', ' ');
  return text;
}

class LongLife : public testing::Test {
 protected:
  void SetUp() override {
    dialogs::composeState() = {};
    list::listState() = {};
    std::strcpy(folder_.script().unreachable, unreachable);
    fillPhonebook();
    fillHandset();
    folders_.refresh();
    ASSERT_TRUE(app_.start());
    app_.settle();
  }

  int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
  bool oneIn(int count) { return below(count) == 0; }
  template <class List>
  auto any(const List& list) {
    return std::data(list)[below(static_cast<int>(std::size(list)))];
  }

  std::string text(bool ofHandset) {
    constexpr const char* words[] = {"tea",  "Tea",   "a = b", "",   " ",     "[PCSENT]",
                                     ";",    "ünd",   "Übung", "42", "Index", "line\r\nx",
                                     "\r\n", "zebra", "last=", "É",  "%s",    "tab\t"};
    std::string joined;
    for (int i = below(4); i >= 0; --i) joined += any(words) + std::string(oneIn(3) ? " " : "");
    if (!ofHandset && oneIn(12)) joined += "жар";  // beyond the code page
    return joined;
  }
  std::string number() {
    constexpr const char* numbers[] = {"+49171555", "5550142", unreachable, "12345678901234567", "0", "77"};
    return any(numbers);
  }
  std::string time() {
    constexpr const char* times[] = {
        "26030211223304", "05031412303532", "99123123595900", "2005/03/14", "", "x"};
    return any(times);
  }

  // What the handset holds becomes something else; the program learns of it by the next Refresh.
  void fillHandset() {
    ScriptedLink& script = folder_.script();
    emptyHandset();
    std::array<model::Messages, 2> later;
    for (int i = below(12); i > 0; --i) {
      constexpr int statuses[] = {-1, -2, 1, 3, 7, 0, 2, 5};
      const int status = any(statuses);
      const Message m{text(true), number().substr(0, 16), time(), below(300) - 20};
      auto entry =
          entryOf(narrowed(m.content), m.phone, m.time, static_cast<std::uint16_t>(std::max(status, 0)));
      entry.number = static_cast<std::int16_t>(m.index);
      if (status == -1) {
        putReceived(script, entry);
        folders_.handset[0].push_back(m);
      } else if (status == -2) {
        putSent(script, entry);
        folders_.handset[1].push_back(m);
      } else {
        putHandset(script, entry);
        if (status == 1 || status == 3) later[0].push_back(m);
        if (status == 7) later[1].push_back(m);
      }
    }
    for (std::size_t folder = 0; folder < 2; ++folder)
      std::copy(later[folder].begin(), later[folder].end(), std::back_inserter(folders_.handset[folder]));
  }
  void emptyHandset() {
    folder_.script().receivedResult = folder_.script().senderResult = folder_.script().handsetResult = 0;
    folders_.handset = {};
  }

  void fillPhonebook() {
    ScriptedLink& script = folder_.script();
    const auto buffer =
        std::as_writable_bytes(std::span{script.contacts}).subspan(phonelink::contactHeadSize);
    for (const char* number : phonebook_)
      phonelink::encodeContact(
          {number, std::string("Name ") + number},
          buffer.subspan(phonelink::contactEntrySize * static_cast<std::size_t>(script.contactResult++))
              .first<phonelink::contactEntrySize>());
  }

  std::vector<int> chooseRows() {
    std::vector<int> rows;
    const int count = static_cast<int>(folders_.rows().size());
    for (int row = 0; row < count; ++row)
      if (oneIn(3)) rows.push_back(row);
    if (rows.empty() && count > 0) rows.push_back(below(count));
    app_.selectRows(rows);
    return rows;
  }
  // Does it, with these steps in the dialogs and boxes that come up and no others.
  template <class Doing>
  void visiting(Steps steps, Doing doing) {
    const DialogVisit visit(std::move(steps));
    doing();
    app_.settle();
    EXPECT_FALSE(visit.hadToEndOne()) << "a dialog that nobody expects";
  }
  void command(UINT id, Steps steps) {
    visiting(std::move(steps), [=, this] { app_.frame()->send(WM_COMMAND, id); });
  }
  HTREEITEM itemOf(int place) {
    const store::FolderState& state = store::folderState();
    if (place == model::mobileGroup) return state.mobileGroup;
    return place == model::pcGroup ? state.pcGroup : state.items.at(static_cast<std::size_t>(place));
  }

  // The answers that a change of these folders takes, and what is kept of their files.
  Steps copiesKept(std::initializer_list<int> folders) {
    Steps steps;
    for (const int folder : folders) {
      if (!folders_.saysMore(folder)) continue;
      const std::string copy = stores[folder - model::pcInbox] + std::string(".unread-1");
      steps.push_back([this, copy, kept = folders_.file(folder).bytes()](HWND box) {
        answer(copy)(box);
        EXPECT_EQ(folder_.read(copy), kept);
        folder_.remove(copy);
      });
    }
    return steps;
  }

  void select() { selectPlace(below(oneIn(5) ? 7 : 5), oneIn(2)); }
  void selectPlace(int place, bool byMouse) {
    done_ << "select " << place << (byMouse ? " by mouse" : "");
    visiting({}, [=, this] {
      if (byMouse) app_.clickTree();
      TreeView_SelectItem(app_.tree().handle(), itemOf(place));
    });
    folders_.select(place, byMouse);
  }

  void sort() {
    const int column = below(3);
    done_ << "sort by " << column;
    visiting(folders_.rows().empty() ? Steps{} : copiesKept({folders_.selected()}),
             [&] { app_.clickHeading(column); });
    folders_.sort(column);
  }

  void refresh() {
    if (oneIn(2)) fillHandset();
    setAnswers(!oneIn(8));
    done_ << "refresh";
    refreshNow();
  }
  void setAnswers(bool answers) {
    folders_.answers = answers;
    folder_.script().openResult = answers;
    if (!answers) done_ << "(silent) ";
  }
  void refreshNow() {
    command(ID_REFRESH, folders_.answers ? Steps{} : Steps{answer(silent)});
    folders_.refresh();
  }

  Steps consent(bool yes) {
    Steps steps = yes ? copiesKept({folders_.selected()}) : Steps{};
    steps.insert(steps.begin(), endWith(yes ? IDOK : IDCANCEL));
    return steps;
  }
  void remove() {
    const std::vector<int> rows = chooseRows();
    EXPECT_EQ(app_.canRun(ID_DELETE), folders_.canDelete());
    if (!folders_.canDelete()) return;
    const bool yes = !oneIn(3);
    done_ << "delete " << rows.size() << (yes ? "" : " refused");
    command(ID_DELETE, consent(yes));
    if (yes) folders_.remove(rows);
  }
  void removeAll() {
    EXPECT_EQ(app_.canRun(ID_DELETE_ALL), folders_.canDelete());
    if (!folders_.canDelete()) return;
    const bool yes = folders_.rows().size() > 15 || oneIn(3);
    done_ << "delete all" << (yes ? "" : " refused");
    command(ID_DELETE_ALL, consent(yes));
    if (yes) removeAllRows();
  }
  void removeAllRows() {
    std::vector<int> all;
    for (const int slot : folders_.rows()) all.push_back(slot);
    folders_.remove(all);
  }

  void drag() {
    const std::vector<int> rows = chooseRows();
    if (rows.empty()) return;
    const int target = below(7);
    const bool escapes = oneIn(8);
    done_ << "drag " << rows.size() << " to " << target << (escapes ? ", escape" : "");
    const POINT over = app_.middleOf(itemOf(target));
    Steps steps;
    if (!escapes && model::isPc(target) && target != folders_.selected())
      steps = copiesKept({target, folders_.selected()});
    if (!escapes && !folders_.drop(rows, target)) steps = {answer(stores[target - model::pcInbox])};
    visiting(std::move(steps), [&] {
      app_.beginDrag(rows[0]);
      app_.drag(WM_MOUSEMOVE, over);
      if (escapes) app_.list().send(WM_KEYDOWN, VK_ESCAPE);
      app_.drag(WM_LBUTTONUP, over);
    });
  }

  void save() {
    const std::vector<int> rows = chooseRows();
    if (rows.empty()) return;
    done_ << "save " << rows.size();
    Steps steps{[this](HWND dialog) {
      const HWND name = item(dialog, 0x47c);
      SendMessageW(name, WM_SETTEXT, 0,
                   reinterpret_cast<LPARAM>(toWide(folder_.path() + "saved.txt").c_str()));
      PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    }};
    if (saved_.exists) steps.push_back(endWith(IDYES));
    saved_.append(folders_.savedLines(rows));
    ++saves_;
    command(ID_SAVE, std::move(steps));
    EXPECT_EQ(folder_.read("saved.txt"), saved_.bytes());
  }

  void about() {
    done_ << "about";
    command(ID_APP_ABOUT, {press(IDOK)});
  }

  void read() {
    if (chooseRows().empty()) return;
    const model::Messages& messages = folders_.table(folders_.selected());
    const int last = static_cast<int>(messages.size()) - 1;
    int at = folders_.rows().at(static_cast<std::size_t>(app_.list().nextSelected(-1)));
    done_ << "read " << at;
    const auto shows = [&messages](int slot) {
      return [&messages, slot](HWND reader) {
        const Message& m = messages.at(static_cast<std::size_t>(slot));
        EXPECT_EQ(oneLineEnds(windowText(item(reader, IDC_READER_CONTENT))), oneLineEnds(m.content));
        EXPECT_EQ(windowText(item(reader, IDC_READER_TIME)), model::shownTime(m.time));
        EXPECT_EQ(windowText(item(reader, IDC_READER_PHONE)), m.phone);
      };
    };
    Steps steps{shows(at)};
    for (int i = below(3); i > 0; --i) {
      const bool forward = oneIn(2);
      if (forward ? at == last : at == 0) continue;  // that button is grey
      at += forward ? 1 : -1;
      steps.push_back(press(forward ? IDC_NEXT : IDC_PREVIOUS));
      steps.push_back(shows(at));
    }
    steps.push_back([](HWND reader) { PostMessageW(reader, WM_CLOSE, 0, 0); });
    visiting(std::move(steps), [this] { app_.clickTwice(); });
  }

  // Numbers picked from the phonebook instead of typed: a few rows, the last one first, none twice.
  std::string pick(Steps& steps, const std::string& receivers) {
    std::vector<std::string> chosen = model::split(receivers, ";");
    std::vector<int> rows;
    for (int row = 0; row < static_cast<int>(std::size(phonebook_)); ++row)
      if (oneIn(2)) rows.push_back(row);
    const bool keeps = !oneIn(3);
    steps.insert(steps.end(), {press(IDC_CONTACT),
                               [rows](HWND book) {
                                 const HWND list = item(book, IDC_PHONEBOOK);
                                 for (const int row : rows)
                                   ListView_SetItemState(list, row, LVIS_SELECTED, LVIS_SELECTED);
                               },
                               press(IDC_ADD_CONTACT), press(keeps ? IDC_ADDRESS_OK : IDC_ADDRESS_CANCEL)});
    if (!keeps) return receivers;
    std::string joined;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
      if (const std::string number = phonebook_[*row];
          std::find(chosen.begin(), chosen.end(), number) == chosen.end())
        chosen.push_back(number);
    for (const std::string& number : chosen) joined += number + ";";
    return joined;
  }

  void compose() {
    std::string receivers;
    for (int i = below(4); i > 0; --i) receivers += number() + (oneIn(8) ? ";;" : ";");
    const std::string text = oneIn(6) ? "" : this->text(false);
    const auto type = [=](HWND dialog) {
      enter(dialog, IDC_RECEIVERS, receivers);
      enter(dialog, IDC_MESSAGE_CONTENT, text);
    };
    Steps steps{type};
    // Without an answer of the handset Contact is no use; it is tried by sending.
    if (folders_.answers && oneIn(4)) receivers = pick(steps, receivers);
    const bool send = !oneIn(3);
    model::Folders::Sending sending;
    bool lost = false;
    if (send) steps.push_back(press(IDC_SEND));
    if (send && !folders_.answers) {
      lost = true;
      steps.push_back(answer(silent));
    } else if (send && (text.empty() || receivers.empty())) {
      steps.push_back(answer(text.empty() ? "Empty Message,Please type." : "No Phone Number Entered."));
    } else if (send) {
      sending = model::Folders::send(receivers, text, unreachable);
      steps.push_back(
          answer(std::to_string(sending.sent) + "/" + std::to_string(sending.total) + " message(s)  sent."));
    }
    done_ << "compose to " << receivers << (send ? ", send" : ", cancel");
    if (sending.total == 0) {  // the dialog still stands
      const bool keep = !text.empty() && oneIn(2);
      done_ << (keep ? ", keep" : "");
      steps.push_back(press(IDC_MESSAGE_CANCEL));
      if (!text.empty()) steps.push_back(endWith(keep ? IDOK : IDCANCEL));
      if (keep) sending.filed.push_back({model::pcDraft, {text, receivers, "", 0}});
    }
    const std::string before = store::timeStamp(framework::localTime());
    command(ID_NEW, std::move(steps));
    if (lost) folders_.loseHandset();
    stamp(sending.filed, before, store::timeStamp(framework::localTime()));
    if (!sending.filed.empty()) folders_.fileAll(sending.filed);
  }
  // The times that the program gave the messages just filed, which must be of now.
  void stamp(std::vector<std::pair<model::Place, Message>>& filed, const std::string& before,
             const std::string& after) {
    std::array<std::size_t, model::folderCount> left{};
    for (const auto& [folder, message] : filed) ++left.at(static_cast<std::size_t>(folder));
    for (auto& [folder, message] : filed) {
      const auto records =
          app_.tree().tables()[store::allFolders[static_cast<std::size_t>(folder)]].records();
      std::size_t& behind = left.at(static_cast<std::size_t>(folder));
      ASSERT_GE(records.size(), behind);
      message.time = records[records.size() - behind--].Time;
      EXPECT_TRUE(before <= message.time && message.time <= after) << message.time;
    }
  }

  void expectAgreement() {
    for (int folder = 0; folder < model::folderCount; ++folder) {
      const store::Folder position = store::allFolders[static_cast<std::size_t>(folder)];
      model::Messages held;
      for (const store::SmsRecord& r : app_.tree().tables()[position].records())
        held.push_back({r.Content, r.Phone, r.Time, r.Index});
      EXPECT_EQ(held, folders_.table(folder)) << "table " << folder;
      const std::string label = app_.label(position);
      EXPECT_EQ(label.substr(label.find('(')), "(" + std::to_string(folders_.labelCount(folder)) + ")")
          << label;
      if (!model::isPc(folder)) continue;
      EXPECT_EQ(folder_.read(stores[folder - model::pcInbox]), folders_.file(folder).bytes());
    }
    const int rows = static_cast<int>(folders_.rows().size());
    ASSERT_EQ(app_.list().itemCount(), rows);
    for (int row = 0; row < rows; ++row) {
      const Message& m = folders_.row(row);
      EXPECT_EQ(app_.list().itemText(row, 0), m.content) << "row " << row;
      EXPECT_EQ(app_.list().itemText(row, 1), m.phone) << "row " << row;
      EXPECT_EQ(app_.list().itemText(row, 2), model::shownTime(m.time)) << "row " << row;
      EXPECT_EQ(app_.list().itemData(row), folders_.rows()[static_cast<std::size_t>(row)]);
    }
    EXPECT_EQ(app_.heading(1), folders_.phoneHeading());
    EXPECT_FALSE(list::listState().drag.dragging);
  }

  void act() {
    const int kind = below(100);
    if (kind < 20)
      select();
    else if (kind < 33)
      sort();
    else if (kind < 40 || (!folders_.answers && oneIn(3)))
      refresh();
    else if (kind < 55)
      compose();
    else if (kind < 63)
      remove();
    else if (kind < 69)
      removeAll();
    else if (kind < 85)
      drag();
    else if (kind < 94)
      read();
    else if (kind < 97)
      about();
    else
      save();
    if (done_.str().empty()) select();  // for want of rows
  }

  // With the same few messages every time, so that two figures can be compared.
  ResourceUse useAtRest() {
    emptyHandset();
    setAnswers(true);
    refreshNow();
    for (const int folder : {model::pcInbox, model::pcSent, model::pcDraft}) {
      selectPlace(folder, true);
      if (!folders_.canDelete()) continue;
      command(ID_DELETE_ALL, consent(true));
      removeAllRows();
    }
    folder_.remove("saved.txt");
    saved_ = {};
    expectAgreement();
    done_.str("");
    return resourceUse();
  }

  static constexpr const char* phonebook_[] = {"100", "5550142", "+300", unreachable};

  const unsigned seed_ = fromEnvironment("QUILLET_SEED", 1);
  std::mt19937 random_{seed_};
  std::ostringstream done_;
  ProgramFolder folder_;
  RunningApp app_{folder_};
  model::Folders folders_;
  model::File saved_;
  int saves_ = 0;
};

TEST_F(LongLife, StaysTrueAndSmall) {
  const int actions = static_cast<int>(fromEnvironment("QUILLET_ACTIONS", 500));
  const int warm = std::max(actions / 4, 300);  // by then everything has been used that is made once and kept
  ResourceUse early;
  for (int i = 0; i < actions; ++i) {
    if (i == warm) {
      early = useAtRest();
      saves_ = 0;
    }
    act();
    expectAgreement();
    ASSERT_FALSE(HasFailure()) << "seed " << seed_ << ", action " << i << ": " << done_.str();
    done_.str("");
  }
  const ResourceUse late = useAtRest();
  std::cout << "seed " << seed_ << "\n after " << warm << ": " << early << "\n after " << actions << ": "
            << late << ", saved " << saves_ << " times\n";
  const int more = actions - warm;
  EXPECT_LE(late.gdiObjects, early.gdiObjects + more / 100);
  EXPECT_LE(late.userObjects, early.userObjects + more / 100);
  // Under Wine the system's dialog for saving keeps a handle each time.
  EXPECT_LE(late.handles, early.handles + more / 100 + saves_);
  // And 24 bytes stay of every font that a dialog or message box has used. A record alone takes 104.
  EXPECT_LE(late.heapBytes, early.heapBytes + 64 * more);
  EXPECT_LE(late.privateBytes, early.privateBytes + (4 << 20));  // what the heaps keep in reserve
}

}  // namespace
