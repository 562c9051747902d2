#include "pages/custom_paper_sizes.h"

#include "core/process_state.h"
#include "core/text.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace ostrel {
namespace {

constexpr std::int32_t kSizeTextUnits = 6;

// Sets a flag for the length of a scope.
class ScopedFlag {
 public:
  explicit ScopedFlag(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
  ~ScopedFlag() { flag_ = before_; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  bool& flag_;
  bool before_;
};

bool IsBlank(const DecimalEdit& edit) {
  char16_t text[kEditTextUnits] = {};
  World().windows.GetWindowTextW(edit.window(), text, static_cast<int>(std::size(text)));
  return FieldText(text).find_first_not_of(u' ') == std::u16string_view::npos;
}

// The number in a box, however many digits it has behind the separator; 0 when there is none.
float NumberIn(DecimalEdit& edit) {
  float number = 0;
  const std::int32_t precision = std::exchange(edit.range.precision, kSizeTextUnits);
  edit.GetValue(&number);
  edit.range.precision = precision;
  return number;
}

}  // namespace

// One side of the size, with what belongs to it.
struct PaperSizeBoxes::Side {
  std::int32_t editId;
  std::int32_t spinId;
  DecimalEdit PaperSizeBoxes::*edit;
  FloatSpin PaperSizeBoxes::*spin;
  LengthLimits SizeLimits::*limits;
  PaperSide record;
};

constexpr PaperSizeBoxes::Side PaperSizeBoxes::kSides[2] = {
    {kWidthEdit, kWidthSpin, &PaperSizeBoxes::widthEdit_, &PaperSizeBoxes::widthSpin_,
     &SizeLimits::width, kWidthSide},
    {kLengthEdit, kLengthSpin, &PaperSizeBoxes::lengthEdit_, &PaperSizeBoxes::lengthSpin_,
     &SizeLimits::length, kLengthSide},
};

enum class PaperSizeBoxes::Taken {
  kUnreadable,  // the box shows no number
  kUnchanged,   // what the box shows of the record
  kChanged,
};

// ---- Showing ------------------------------------------------------------------------------------

void PaperSizeBoxes::LimitTexts(WindowHandle dialog) {
  Windows& windows = World().windows;
  for (const Side& side : kSides) {
    windows.SendMessageW(windows.GetDlgItem(dialog, side.editId), kEmLimitText, kSizeTextUnits, 0);
  }
}

void PaperSizeBoxes::Attach(WindowHandle dialog) {
  showing_ = false;
  leaving_ = false;
  for (const Side& side : kSides) {
    DecimalEdit& edit = this->*side.edit;
    edit.Attach(dialog, side.editId);
    edit.range = {.maximumTextLength = kSizeTextUnits};
    (this->*side.spin).Attach(dialog, side.spinId);
  }
}

void PaperSizeBoxes::SetUnit(PaperUnit unit) {
  unit_ = unit;
  for (const Side& side : kSides) {
    DecimalEdit& edit = this->*side.edit;
    edit.range.minimum = LeastOf(limits().*side.limits);
    edit.range.maximum = MostOf(limits().*side.limits);
    edit.range.precision = limits().decimals;
    (this->*side.spin).SetBuddy(&edit);
  }
}

PaperLength PaperSizeBoxes::LengthOf(const CustomPaperRecord& paper, const Side& side) const {
  return LengthOfPixels(StoredPixels(paper, side.record), unit_, limits().decimals);
}

PaperLength PaperSizeBoxes::ShownLength(const CustomPaperRecord& paper, const Side& side) const {
  const double length = WithinLimits(LengthOf(paper, side).value, limits().*side.limits);
  return {RoundToDigits(length, limits().decimals), unit_, limits().decimals};
}

void PaperSizeBoxes::Show(const CustomPaperRecord& paper) {
  const ScopedFlag showing(showing_);
  for (const Side& side : kSides) {
    (this->*side.edit).SetValue(static_cast<float>(ShownLength(paper, side).value));
  }
}

// ---- What a user changes ------------------------------------------------------------------------

PaperSizeBoxes::Taken PaperSizeBoxes::TakeLength(const Side& side, CustomPaperRecord& paper) {
  float typed = 0;
  if ((this->*side.edit).GetValue(&typed) != kTextStands) {
    return Taken::kUnreadable;
  }
  const int decimals = limits().decimals;
  PaperLength length = {RoundToDigits(static_cast<double>(typed), decimals), unit_, decimals};
  if (IsSameLength(length, ShownLength(paper, side))) {
    return Taken::kUnchanged;
  }
  // The box will show the nearer end once it is left, which counts as unchanged: what is stored
  // has to be that end already.
  length.value = WithinLimits(length.value, limits().*side.limits);
  StoreLength(paper, side.record, length);
  return Taken::kChanged;
}

bool PaperSizeBoxes::TakeChange(const Side& side, CustomPaperRecord& paper) {
  return !showing_ && TakeLength(side, paper) == Taken::kChanged;
}

// A length in inches above 14 never shows, not even while it is typed. Other numbers outside the
// limits stand until the box is left.
void PaperSizeBoxes::LowerAtOnce(const Side& side) {
  constexpr std::uintptr_t kBehindAnyText = 999;
  DecimalEdit& edit = this->*side.edit;
  if (showing_ || unit_ != PaperUnit::kInches || side.editId != kLengthEdit ||
      NumberIn(edit) <= edit.range.maximum) {
    return;
  }
  edit.SetValue(static_cast<float>(limits().length.most));
  World().windows.SendMessageW(edit.window(), kEmSetSel, kBehindAnyText, -1);
}

// Brings the number in a box into the range. A box without one takes the least. Result: whether
// what the box shows may stand.
bool PaperSizeBoxes::PutRight(const Side& side) {
  DecimalEdit& edit = this->*side.edit;
  if (IsBlank(edit)) {
    edit.SetValue(static_cast<float>((limits().*side.limits).least));
    return true;
  }
  return edit.Validate() == kTextStands;
}

bool PaperSizeBoxes::OnCommand(std::int32_t control, std::uint16_t code, CustomPaperRecord& paper) {
  const auto* const side = std::ranges::find(kSides, control, &Side::editId);
  if (side == std::end(kSides)) {
    return false;
  }
  if (code == kEnChange) {
    if ((this->*side->edit).ChangeCheck() != kTextStands) {
      return false;
    }
    LowerAtOnce(*side);
    return TakeChange(*side, paper);
  }
  // A box that can't stand takes the focus back. The other one is left by that, and a box that the
  // dialog opens takes the focus too: neither starts all over.
  if (code == kEnKillFocus && !leaving_ && !showing_) {
    const ScopedFlag leaving(leaving_);
    PutRight(*side);
  }
  return false;
}

bool PaperSizeBoxes::OnStep(std::int32_t control, bool up, CustomPaperRecord& paper) {
  const auto* const side = std::ranges::find(kSides, control, &Side::spinId);
  return side != std::end(kSides) && (this->*side->spin).Step(up) && TakeChange(*side, paper);
}

bool PaperSizeBoxes::Take(CustomPaperRecord& paper) {
  const ScopedFlag showing(showing_);
  for (const Side& side : kSides) {
    if (!PutRight(side) || TakeLength(side, paper) == Taken::kUnreadable) {
      return false;
    }
    // A length that wasn't changed may lie outside the limits by less than the box can show, and
    // its two numbers needn't belong together.
    PaperLength taken = LengthOf(paper, side);
    const double within = WithinLimits(taken.value, limits().*side.limits);
    if (within != taken.value) {
      taken.value = within;
    } else {
      taken = {StoredPixels(paper, side.record), PaperUnit::kPixels, taken.decimals};
    }
    StoreLength(paper, side.record, taken);
  }
  return true;
}

}  // namespace ostrel
