// Cutting a band that goes onto more than one page. Private to the engine.
#pragma once

#include "engine/band.h"

namespace dorvo::engine {

// Where the band, of which `from` and below is left, is cut so that nothing of the upper part lies below `limit`: there
// or higher, above a text or a stretch that would be cut through and has room on a page of `page_room` twips. `from`
// when nothing can stand above the limit.
int cut_above(const Band& band, int from, int limit, int page_room);

// Whether some of the item lies in the band from `from` to `to`, and what. A text stays whole and goes where its top
// is, but a grown one goes on line by line; rules are cut. `last`: all that lies lower belongs here too.
bool part_of(const PageItem& item, int from, int to, bool last, PageItem& part);

}  // namespace dorvo::engine
