#include "handset/port_settings.h"

#include <gtest/gtest.h>

#include <string>

#include "skin/setting_text.h"

namespace handset {
namespace {

struct Case {
  const char* before;
  const char* after;
};

TEST(PortSettings, ChangeOnlyThePort) {
  const Case cases[] = {
      {"", "[port]\r\ncom=12\r\n"},
      {"[port]\r\ncom=0\r\n", "[port]\r\ncom=12\r\n"},
      {"[port]\ncom=0", "[port]\ncom=12"},
      {"[port]", "[port]\r\ncom=12\r\n"},
      {"[port]\n", "[port]\ncom=12\r\n"},
      {"; mine\r\n[Port]\r\nbaud=9600\r\n COM = 3 \r\nx=1\r\n[b]\r\ncom=7\r\n",
       "; mine\r\n[Port]\r\nbaud=9600\r\ncom=12\r\nx=1\r\n[b]\r\ncom=7\r\n"},
      {"[other]\r\ncom=7", "[other]\r\ncom=7\r\n[port]\r\ncom=12\r\n"},
      {"[port]\r\n;com=1\r\ncomx=2\r\n", "[port]\r\ncom=12\r\n;com=1\r\ncomx=2\r\n"},
      {"com=7\r\n[port]\r\n[c]\r\n", "com=7\r\n[port]\r\ncom=12\r\n[c]\r\n"},
      {"[port]\r\na=1\r\n[b]\r\n[port]\r\ncom=4\r\n", "[port]\r\na=1\r\n[b]\r\n[port]\r\ncom=12\r\n"},
      {"\xEF\xBB\xBF[port]\r\ncom=0\r\n", "\xEF\xBB\xBF[port]\r\ncom=12\r\n"},
      {"\xEF\xBB\xBF", "\xEF\xBB\xBF[port]\r\ncom=12\r\n"},
  };
  for (const Case& c : cases) {
    const std::string after = withPort(c.before, 12);
    EXPECT_EQ(after, c.after) << c.before;
    const std::string read = after.starts_with("\xEF\xBB\xBF") ? after.substr(3) : after;
    EXPECT_EQ(skin::findSetting(read, "port", "com"), "12") << "what the program reads from " << after;
    EXPECT_EQ(withPort(after, 12), after);
  }
}

}  // namespace
}  // namespace handset
