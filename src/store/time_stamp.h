#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace store {

// What a list or reader shows for a time: a handset time (exactly 14 characters, UTF-8) becomes
// "20yy-mm-dd hh:mm:ss" position by position, digits or not; any other text is returned as it stands.
std::string displayTime(std::string_view time);

// "%Y/%m/%d  %H:%M:%S", two spaces between date and time.
std::string timeStamp(const std::tm& time);

}  // namespace store
