// What choosing a paper writes into the record, whichever dialog it is chosen in: its id, and of
// one of the user's own its size with the announcement of a custom one.
//
// A paper of the table has no need of a size in the record, and takes no announcement back: the
// driver's own records announce width and length anyway.
#pragma once

#include "config/setting_stores.h"
#include "core/ui_context.h"

#include <cstdint>

namespace ostrel {

// Whether a record can hold the id of a stored paper as one of the user's. A paper whose id it
// can't hold is never chosen.
bool CanBeChosen(const CustomPaperRecord& paper);

// A stored paper of that id that can be chosen. Result: false when there is none.
bool FindChoosablePaper(std::uint32_t paperId, CustomPaperRecord& paper);

// A stored paper that can be chosen.
void ChooseStoredPaper(UIContext& context, const CustomPaperRecord& paper);

// A paper of the table whose size other programs are told as well. An id without a row changes
// nothing.
void ChooseTablePaperWithSize(UIContext& context, std::int16_t paperId);

// A row of a list of papers. One of the user's own that is gone from the store leaves the size as
// it was.
void ChoosePaper(UIContext& context, std::int16_t paperId);

}  // namespace ostrel
