#include "pages/warning_boxes.h"

#include "core/language.h"
#include "core/message_box.h"
#include "core/text.h"
#include "pages/media_rules.h"

#include <array>

namespace ostrel {
namespace {

constexpr std::size_t kBoxTextUnits = 260;

using BoxText = std::array<char16_t, kBoxTextUnits>;

BoxText Load(ModuleHandle module, std::uint32_t stringId) {
  BoxText text = {};
  LoadUiString(module, stringId, text);
  return text;
}

int ShowBox(WindowHandle owner, const char16_t* text, const char16_t* title,
            std::uint32_t buttons = 0) {
  return ShowMessageBox(owner, text, title, buttons | kMbIconExclamation);
}

void Show(WindowHandle owner, ModuleHandle module, const BoxText& text) {
  ShowExclamation(owner, module, text.data(), kStringConflictTitle);
}

void ShowString(WindowHandle owner, ModuleHandle module, std::uint32_t stringId) {
  Show(owner, module, Load(module, stringId));
}

}  // namespace

void ShowExclamation(WindowHandle owner, ModuleHandle module, const char16_t* text,
                     std::uint32_t titleStringId) {
  ShowBox(owner, text, Load(module, titleStringId).data());
}

void WarnString(WindowHandle owner, ModuleHandle module, std::uint32_t stringId,
                std::uint32_t titleStringId) {
  ShowExclamation(owner, module, Load(module, stringId).data(), titleStringId);
}

bool AskYesNo(WindowHandle owner, ModuleHandle module, std::uint32_t stringId,
              std::uint32_t titleStringId) {
  const BoxText text = Load(module, stringId);
  const BoxText title = Load(module, titleStringId);
  return ShowBox(owner, text.data(), title.data(), kMbYesNo) == kIdYes;
}

void WarnMediaUnsupported(WindowHandle owner, ModuleHandle module, std::int32_t media) {
  BoxText text;
  TextBuilder out(text);
  if (const MediaName* row = FindMediaName(media); row != nullptr) {
    out.Add(FieldText(Load(module, row->name)));
  }
  for (const StringId part :
       {kStringMediaRefusedMiddle, kStringTwoSidedPrinting, kStringMediaRefusedEnd}) {
    out.Add(FieldText(Load(module, part)));
  }
  Show(owner, module, text);
}

void WarnPaperNoDuplex(WindowHandle owner, ModuleHandle module) {
  ShowString(owner, module, kStringPaperNotTwoSided);
}

void WarnSourceConflict(WindowHandle owner, ModuleHandle module, bool paperRefuses,
                        bool mediaRefuses) {
  if (paperRefuses) {
    ShowString(owner, module, kStringPaperRefusesSource);
  } else if (mediaRefuses) {
    ShowString(owner, module, kStringMediaRefusesSource);
  } else {
    Show(owner, module, {});
  }
}

void WarnPaperStore(WindowHandle owner) {
  ShowBox(owner, u"Initialize paper error.", u"Paper");
}

void WarnMedia(WindowHandle owner, ModuleHandle module) {
  ShowString(owner, module, kStringMediaRefusesPaper);
}

void WarnPosterDuplex(WindowHandle owner, ModuleHandle module) {
  ShowString(owner, module, kStringPosterExcludesTwoSided);
}

void WarnPosterDuplexWatermark(WindowHandle owner, ModuleHandle module) {
  ShowString(owner, module, kStringPosterExcludesTwoSidedWatermark);
}

void WarnText(WindowHandle owner, ModuleHandle module, const char16_t* text) {
  BoxText cut;
  CopyText(cut, CallerText(text));
  Show(owner, module, cut);
}

void WarnWatermarkPoster(WindowHandle owner, ModuleHandle module, WatermarkPoster kind) {
  ShowString(owner, module,
             kind == WatermarkPoster::kPosterRefused ? kStringPosterExcludesWatermark
                                                     : kStringWatermarkExcludesPoster);
}

void WarnEditorPoster(WindowHandle owner, ModuleHandle module) {
  ShowString(owner, module, kStringWatermarkExcludesPoster);
}

void WarnBookletCollate(WindowHandle owner, ModuleHandle module) {
  ShowString(owner, module, kStringDefaultsExcludeBooklet);
}

}  // namespace ostrel
