#pragma once

#include <array>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

// The five folders as a person who knows the rules expects them, worked out without anything of the program:
// what the tables, the list, the labels and the files hold after each thing that can be done. UTF-8
// throughout; the system's code page is taken to be 1252.
namespace model {

struct Message {
  std::string content;
  std::string phone;
  std::string time;
  int index = 0;

  bool operator==(const Message&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Message& message);
using Messages = std::vector<Message>;

// The places of the tree that can be selected; the first five are folders in their order.
enum Place { mobileInbox, mobileOutbox, pcInbox, pcSent, pcDraft, mobileGroup, pcGroup };
constexpr int folderCount = 5;
constexpr bool isPc(int place) {
  return place == pcInbox || place == pcSent || place == pcDraft;
}

struct File {
  bool exists = false;
  std::string text;
  // Of the code page while that can hold the text, otherwise UTF-8 behind a mark; nothing when there is none.
  std::string bytes() const;
  // Four lines for each message behind what there is.
  void append(const std::string& lines);

 private:
  friend class Folders;
  bool marked_ = false;
};

class Folders {
 public:
  // What the handset holds, and whether it answers.
  std::array<Messages, 2> handset;
  bool answers = true;

  const Messages& table(int folder) const { return tables_.at(static_cast<std::size_t>(folder)); }
  int labelCount(int folder) const { return counts_.at(static_cast<std::size_t>(folder)); }
  const File& file(int pcFolder) const { return files_.at(static_cast<std::size_t>(pcFolder - pcInbox)); }
  int selected() const { return selected_; }
  const std::vector<int>& rows() const { return rows_; }  // the slot of each row
  const Message& row(int i) const;
  std::string phoneHeading() const { return headedSender_ ? "Sender" : "Receiver"; }
  // Whether the file says more than its messages, since a text ends at its last "=" when it is read. The next
  // change of the folder keeps a copy of such a file.
  bool saysMore(int folder) const { return isPc(folder) && saysMore_.at(static_cast<std::size_t>(folder)); }
  bool canDelete() const { return isPc(selected_) && !rows_.empty(); }

  void refresh();
  void select(int place, bool byMouse);
  void sort(int column);
  void remove(std::vector<int> rows);
  // False when nothing was moved since the target has not been read.
  bool drop(std::vector<int> rows, int target);
  // The lines that saving these rows adds to a text file.
  std::string savedLines(std::vector<int> rows) const;

  // What sending to these receivers files where, the time still empty; how many went out of how many.
  struct Sending {
    std::vector<std::pair<Place, Message>> filed;
    int sent = 0;
    int total = 0;
  };
  static Sending send(const std::string& receivers, const std::string& text, const std::string& unreachable);
  // What was sent or kept is put into the files, then both folders are read anew.
  void fileAll(const std::vector<std::pair<Place, Message>>& messages);
  // The handset was wanted for sending and did not answer.
  void loseHandset();

 private:
  void read(int folder);
  void show();
  void rewrite(int folder);
  Messages& at(int folder) { return tables_.at(static_cast<std::size_t>(folder)); }

  std::array<Messages, folderCount> tables_;
  std::array<int, folderCount> counts_{};
  std::array<bool, folderCount> isRead_{};
  std::array<bool, folderCount> saysMore_{};
  std::array<File, 3> files_;
  int selected_ = mobileInbox;
  std::vector<int> rows_;
  bool clicked_ = false;
  bool headedSender_ = true;
};

std::vector<std::string> split(const std::string& text, const std::string& separator);
std::string shownTime(const std::string& time);

}  // namespace model
