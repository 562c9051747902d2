// What the pages of one sheet tell one another beside the record: plain facts, kept per thread like
// the pages' own states, so that no page has to know another.
#pragma once

#include "core/page_state_table.h"

namespace ostrel {

struct PageLinks final : PageState {
  // Two-sided printing is off. Told by the print options page, by the layout page (a booklet turns
  // it on) and by the favourites page; the paper page locks the media types without it. On until
  // somebody tells otherwise: a paper page that is opened first has the record to go by.
  bool duplexOff = true;

  // The duplex group of the print options page is live. Set by that page's rule, cleared by the
  // layout page when a poster is chosen.
  bool duplexAllowed = false;

  // The job mode may differ from 0. Set and cleared by the print options, layout and watermark
  // pages.
  bool jobModeAllowed = false;

  // A change of paper or media left two-sided printing possible. Cleared by the print options
  // page's start, set and cleared by the paper page; nobody asks for it yet.
  bool mediaChanged = false;
};

// Tells the thread's pages a fact. Without memory for the facts it is lost.
void TellPages(bool PageLinks::*fact, bool value);

// A fact of the thread's pages; its first value when none was told.
bool AskPages(bool PageLinks::*fact);

}  // namespace ostrel
