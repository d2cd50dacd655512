#pragma once

#include <ctime>
#include <initializer_list>
#include <string>
#include <string_view>

#include "text/system.h"

// Texts as the windows need them: UTF-8 inside the program, UTF-16 at the controls.
namespace framework {

using text::toUtf8;
using text::toWide;

// The local time as the system's clock shows it.
std::tm localTime();

// Replaces "%s" and "%d" in `pattern`, in order, by `values`.
std::string formatText(std::string_view pattern, std::initializer_list<std::string_view> values);

}  // namespace framework
