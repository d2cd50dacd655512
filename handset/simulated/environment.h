#pragma once

#include <optional>
#include <string>

namespace handset {

// A moment in local time, and how far that is ahead of UTC.
struct LocalTime {
  int year = 0;
  int month = 0;  // 1-12
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int zoneQuarters = 0;  // quarters of an hour, negative west of Greenwich
};

// What a simulated handset takes from outside, so that a test can hand it a file, a time and no waiting.
// Owned by the simulated handset.
class Environment {
 public:
  virtual ~Environment() = default;

  // The content file's bytes, at most `limit` of them; nullopt when there is none or it cannot be read.
  virtual std::optional<std::string> readContent(std::size_t limit) = 0;
  virtual LocalTime now() = 0;
  virtual void pause(int milliseconds) = 0;
  // A line for whoever is looking for mistakes in the content file, UTF-8.
  virtual void report(const std::string& line) = 0;
};

}  // namespace handset
