#include "skin/room_for_texts.h"

#include <algorithm>
#include <vector>

namespace skin {
namespace {

void drawApart(std::span<Place> places, int cut, int room) {
  for (Place& place : places) {
    if (place.to >= cut) place.to += room;
    if (place.from >= cut) place.from += room;
  }
}

}  // namespace

void makeRoom(std::span<Place> places) {
  // From the left: what has grown with its neighbours may need no more.
  std::vector<Place*> ordered;
  for (Place& place : places) ordered.push_back(&place);
  std::ranges::stable_sort(ordered, {}, &Place::to);
  for (Place* const place : ordered) {
    const int missing = place->needed - (place->to - place->from);
    if (missing <= 0) continue;
    const int before = place->centred ? missing / 2 : 0;
    drawApart(places, place->from, before);
    place->from -= before;
    drawApart(places, place->to, missing - before);
  }
}

}  // namespace skin
