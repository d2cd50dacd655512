#pragma once

#include <string>

#include "store/sms_record.h"

namespace app {

// A text that is looked for in messages: in what they say, in their number and in their time as it is shown.
class SoughtText {
 public:
  // UTF-8. Unless the letter case is to match, it does not matter, nor do accents.
  SoughtText(std::string text, bool matchCase);

  const std::string& text() const { return text_; }
  bool isIn(const store::SmsRecord& message) const;

 private:
  bool isIn(const std::string& field) const;

  std::string text_;
  std::wstring folded_;
  std::string narrowFolded_;  // the same, to look for in ASCII
  bool matchCase_;
};

}  // namespace app
