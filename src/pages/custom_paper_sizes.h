// The two boxes of a paper's size, with their spins: they show a record in one unit, and take what
// a user makes of it.
//
// The boxes only ever show what the limits of the unit allow. A record that they show keeps its
// pixels until a user changes a number: one that differs by less than half a step of the last digit
// from what the box shows of the record is the record's own.
#pragma once

#include "pages/controls.h"
#include "pages/custom_paper_units.h"

#include <cstdint>

namespace ostrel {

class PaperSizeBoxes {
 public:
  enum Control : std::int32_t {
    kWidthSpin = 1270,
    kLengthSpin = 1273,
    kWidthEdit = 1358,
    kLengthEdit = 1442,
  };

  // Limits how much a user can type. Needs nothing attached.
  static void LimitTexts(WindowHandle dialog);

  void Attach(WindowHandle dialog);
  // Sets limits and digits. What is shown stays until it is shown anew.
  void SetUnit(PaperUnit unit);
  PaperUnit unit() const { return unit_; }
  const SizeLimits& limits() const { return LimitsOf(unit_); }

  // Shows a record. A side outside the limits shows the nearer end: 356 mm never show as more than
  // 14.00 inches.
  void Show(const CustomPaperRecord& paper);

  // A message of one of the boxes, or a step of one of the spins. Result: whether the user has
  // changed the record.
  bool OnCommand(std::int32_t control, std::uint16_t code, CustomPaperRecord& paper);
  bool OnStep(std::int32_t control, bool up, CustomPaperRecord& paper);

  // Takes what the boxes show, brought into the limits. Result: false when one of them shows no
  // number that may stand; it has the focus then.
  bool Take(CustomPaperRecord& paper);

 private:
  struct Side;
  enum class Taken;
  static const Side kSides[2];

  PaperLength LengthOf(const CustomPaperRecord& paper, const Side& side) const;
  PaperLength ShownLength(const CustomPaperRecord& paper, const Side& side) const;
  Taken TakeLength(const Side& side, CustomPaperRecord& paper);
  bool TakeChange(const Side& side, CustomPaperRecord& paper);
  void LowerAtOnce(const Side& side);
  bool PutRight(const Side& side);

  DecimalEdit widthEdit_;
  FloatSpin widthSpin_;
  DecimalEdit lengthEdit_;
  FloatSpin lengthSpin_;
  PaperUnit unit_ = PaperUnit::kMillimeters;
  bool showing_ = false;  // code writes into the boxes: that is no change by the user
  bool leaving_ = false;  // a box that is left is put right
};

}  // namespace ostrel
