#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "handset/at/channel.h"
#include "handset/at/dialect.h"
#include "handset/at/phonebook.h"

namespace handset::at {

// Reads a handset's phonebooks. Made for one operation; borrows what it is given. What fails leaves its
// reason in problem().
class PhonebookReader {
 public:
  PhonebookReader(Channel& channel, Clock& clock, const Dialect& dialect)
      : channel_{channel}, clock_{clock}, dialect_{dialect} {}

  // "SM" or "ME".
  bool select(std::string_view store);
  // In the character set that loses least; the one that the handset had is in force again afterwards.
  Listing<Contact> read(std::string_view store);

  const std::string& problem() const { return problem_; }

 private:
  struct CurrentSet {
    std::string name;  // empty: not known
    bool hex = false;  // said in digits
  };

  CurrentSet currentSet();
  bool setCharacterSet(std::string_view name);
  void chooseCharacterSet();
  std::optional<IndexRange> places();
  Listing<Contact> readEntries(std::string_view store);
  bool fail(std::string problem);

  Channel& channel_;
  Clock& clock_;
  const Dialect& dialect_;
  CharacterSet set_ = CharacterSet::gsm;
  bool hexStrings_ = false;  // in the character set that is in force
  std::string problem_;
};

}  // namespace handset::at
