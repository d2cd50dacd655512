#pragma once

#include <optional>
#include <string>
#include <string_view>

// What the lines of a modem mean, apart from the values in them.
namespace handset::at {

// A line that ends an answer.
struct FinalResult {
  enum class Family { plain, equipment, message };

  bool ok = false;
  Family family = Family::plain;
  int number = -1;   // of an error; -1 when it has none
  std::string text;  // as the modem put it
};

// nullopt: the line does not end an answer.
std::optional<FinalResult> finalResultIn(std::string_view line);

// Whether the modem says this of its own accord, while an answer whose values begin with `prefix` is awaited.
bool isUnsolicited(std::string_view line, std::string_view prefix);

// Whether an unsolicited line is followed by one that belongs to it.
enum class Companion { none, hexadecimal, any };
Companion companionOf(std::string_view line);

// An error in words, the modem's own in parentheses.
std::string reasonOf(const FinalResult& result);

// There is no SIM, or it wants something that a person has to give.
bool isSimTrouble(const FinalResult& result);

// The SIM asks for its PIN.
bool wantsPin(const FinalResult& result);

// The SIM or the store is not ready yet; asking again may help.
bool isBusy(const FinalResult& result);

}  // namespace handset::at
