#include "pages/print_options_texts.h"

#include "core/language.h"
#include "core/paper_tables.h"
#include "core/string_ids.h"
#include "core/text.h"
#include "pages/media_rules.h"
#include "pages/page_record.h"
#include "pages/reasons.h"

#include <algorithm>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::u16string_view kWarningBreak = u"\r\n\t";

// Appends a piece to a text that has no more room than the piece alone would need: a text that is
// longer stays as it is.
class NarrowText {
 public:
  explicit NarrowText(std::span<char16_t> buffer) : buffer_(buffer) {}

  NarrowText& Add(std::u16string_view piece) {
    const std::size_t length = FieldText(buffer_).size();
    if (length <= piece.size()) {
      const std::size_t room = std::min(piece.size() + 1, buffer_.size());
      TextBuilder(buffer_.subspan(length, room - length)).Add(piece);
    }
    return *this;
  }

 private:
  std::span<char16_t> buffer_;
};

constexpr std::u16string_view kRegionPaperA4 = u" A4 (210 x 297mm)";
constexpr std::u16string_view kRegionPaperLetter = u"Letter (8.5 x 11\"";

}  // namespace

void TellDuplexReasons(UIContext& context, std::span<char16_t> buffer) {
  Reasons reasons(context, buffer);
  reasons.AddIf(MediaLocksDuplex(context), kStringMediaNotTwoSidedReason);
  reasons.AddIf(PaperLocksDuplex(context), kStringPaperNotTwoSidedReason);
  reasons.AddIf(IsPosterPages(context), kStringPosterOnReason);
  reasons.AddIf(IsBooklet(context), kStringBookletOnReason);
  reasons.AddIf(IsReverse(context), kStringReverseOrderOnReason);
}

void TellReverseReason(UIContext& context, std::span<char16_t> buffer) {
  Reasons reasons(context, buffer);
  reasons.AddIf(StoredDuplex(context) != kDuplexOneSided,
                IsBooklet(context) ? kStringBookletExcludesReverseOrder
                                   : kStringTwoSidedExcludesReverseOrder);
}

void TellCollateReason(const UIContext& context, std::span<char16_t> buffer) {
  Reasons(context, buffer).Add(kStringBookletAlwaysCollated);
}

void TellJobModeReason(const UIContext& context, std::span<char16_t> buffer) {
  Reasons reasons(context, buffer);
  if (WatermarkKind(context) > 0) {
    reasons.Add(kStringRecordRefused);
  } else {
    reasons.AddIf(IsPosterPages(context) || IsBooklet(context), kStringJobModeLocked);
  }
}

bool TellLegacyWarning(UIContext& context, std::uintptr_t code, std::span<char16_t> buffer) {
  constexpr std::uintptr_t kPaper = 3;
  constexpr std::uintptr_t kMedia = 4;
  constexpr std::uintptr_t kMediaToo = 5;
  constexpr std::uintptr_t kBreakAlone = 6;
  if (code < kPaper || code > kBreakAlone) {
    return false;
  }
  const ModuleHandle texts = context.languageModule;
  LoadUiString(texts, kStringOldConflictMessage, buffer);
  char16_t piece[kMaxPathUnits] = {};
  NarrowText text(buffer);
  if (code == kPaper) {
    LoadUiString(texts, kStringOldConflictPaper, piece);
    text.Add(FieldText(piece)).Add(IsA4Locale() ? kRegionPaperA4 : kRegionPaperLetter);
  } else {
    text.Add(kWarningBreak);
  }
  if (code == kMedia || code == kMediaToo) {
    LoadUiString(texts, kStringSummaryMediaType, piece);
    char16_t media[kMaxPathUnits] = {};
    if (const MediaName* name = FindMediaName(RepairedField(context, kDmMediaType));
        name != nullptr) {
      LoadUiString(texts, name->name, media);
    }
    text.Add(FieldText(piece)).Add(FieldText(media));
  }
  return true;
}

}  // namespace ostrel
