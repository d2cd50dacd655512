#pragma once

#include <iosfwd>

// What this process holds of what the system lends out.
struct ResourceUse {
  long long heapBytes = 0;     // in all heaps, handed out and not given back
  long long privateBytes = 0;  // committed memory, heaps with their reserve included
  int gdiObjects = 0;
  int userObjects = 0;
  int handles = 0;
};

ResourceUse resourceUse();
std::ostream& operator<<(std::ostream& out, const ResourceUse& use);
