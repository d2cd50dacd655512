#pragma once

namespace dialogs {

// Where the reader stands in a folder, and which of its two buttons can be pressed. The order of the tests in
// each step is deliberate: in a folder of one message, choosing it leaves "<<" enabled.
class ReaderPosition {
 public:
  ReaderPosition(int position, int count)
      : position_(position),
        count_(count),
        previousEnabled_(position != 0),
        nextEnabled_(position != count - 1) {}

  int position() const { return position_; }
  bool previousEnabled() const { return previousEnabled_; }
  bool nextEnabled() const { return nextEnabled_; }

  // Follows the list of the folder before a step; the buttons are not touched.
  void moveTo(int position) { position_ = position; }

  // A message was chosen from the list of the folder.
  void choose(int chosen) {
    position_ = chosen;
    previousEnabled_ = position_ != 0;
    if (position_ == 0) nextEnabled_ = true;
    if (position_ == count_ - 1) {
      nextEnabled_ = false;
      previousEnabled_ = true;
    } else {
      nextEnabled_ = true;
    }
  }

  void stepBack() {
    if (position_ > 0) --position_;
    if (position_ == 0) previousEnabled_ = false;
    nextEnabled_ = true;
  }

  void stepForward() {
    if (position_ < count_ - 1) ++position_;
    if (position_ == count_ - 1) nextEnabled_ = false;
    previousEnabled_ = true;
  }

 private:
  int position_;
  int count_;
  bool previousEnabled_;
  bool nextEnabled_;
};

}  // namespace dialogs
