// The boxes that tell the user which setting was refused. Each is an exclamation box over `owner`
// under one title, with the texts of `module`, the context's language library. A text is cut at 259
// characters. A box that can't be shown is passed over.
#pragma once

#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// An exclamation box with a text of its own under a title of `module`. The box reads from right to
// left where the language does.
void ShowExclamation(WindowHandle owner, ModuleHandle module, const char16_t* text,
                     std::uint32_t titleStringId);

// The same with a text of `module`.
void WarnString(WindowHandle owner, ModuleHandle module, std::uint32_t stringId,
                std::uint32_t titleStringId);

// The same with the buttons yes and no. Result: whether the answer was yes; a box that can't be
// shown is answered with no.
bool AskYesNo(WindowHandle owner, ModuleHandle module, std::uint32_t stringId,
              std::uint32_t titleStringId);

// A media type that can't be printed on both sides; one without a name is told as an empty one.
void WarnMediaUnsupported(WindowHandle owner, ModuleHandle module, std::int32_t media);

// A paper that can't be printed on both sides.
void WarnPaperNoDuplex(WindowHandle owner, ModuleHandle module);

// A source that the paper, or else the media type, refuses. With neither flag the box is empty.
void WarnSourceConflict(WindowHandle owner, ModuleHandle module, bool paperRefuses,
                        bool mediaRefuses);

// The store of the user's papers can't be opened. This box is told in no language but one.
void WarnPaperStore(WindowHandle owner);

// A media type that the paper refuses.
void WarnMedia(WindowHandle owner, ModuleHandle module);

// Poster and two-sided printing, whichever came second; and both with a watermark too.
void WarnPosterDuplex(WindowHandle owner, ModuleHandle module);
void WarnPosterDuplexWatermark(WindowHandle owner, ModuleHandle module);

// A text put together before: the list of what forbids a booklet. It may be empty, and so may the
// box.
void WarnText(WindowHandle owner, ModuleHandle module, const char16_t* text);

enum class WatermarkPoster {
  kPosterRefused = 1,     // a watermark is in force
  kWatermarkRefused = 2,  // poster printing is on
};
void WarnWatermarkPoster(WindowHandle owner, ModuleHandle module, WatermarkPoster kind);

// A watermark saved in its editor while poster printing is on.
void WarnEditorPoster(WindowHandle owner, ModuleHandle module);

// The defaults button while booklet printing is on.
void WarnBookletCollate(WindowHandle owner, ModuleHandle module);

}  // namespace ostrel
