#include "pages/custom_paper.h"

#include "core/language.h"
#include "core/paper_tables.h"
#include "core/process_state.h"
#include "core/string_ids.h"
#include "core/text.h"
#include "pages/chosen_paper.h"
#include "pages/custom_paper_names.h"
#include "pages/guarded_procedure.h"
#include "pages/name_cleaning.h"
#include "pages/page_support.h"
#include "pages/warning_boxes.h"

#include <span>
#include <string_view>
#include <utility>

namespace ostrel {
namespace {

// ---- Controls -----------------------------------------------------------------------------------

constexpr std::uint32_t kTemplate = 657;

enum Control : std::int32_t {
  kNameCombo = 1009,
  kDefaultsButton = 1064,
  kMillimetersRadio = 1110,
  kInchesRadio = 1111,
  kHelpButton = 1112,
  kDeleteButton = 1417,
  kSaveButton = 1421,
};

constexpr std::uint32_t kHelpTopic = 5100;

// clang-format off
constexpr CaptionRow kCaptions[] = {
    // Control, String
    {1267, kStringSize},
    {1109, kStringUnitGroup},
    {1165, kStringCustomNameLabel},
    {1420, kStringCustomNameLabel},
    {1110, kStringMillimeters},
    {1111, kStringInches},
    {1421, kStringSaveCustomSize},
    {1417, kStringDeleteCustomSize},
    {1064, kStringDefaults},
    {1112, kStringHelp},
    {   1, kStringOk},
    {   2, kStringCancel},
};

constexpr CaptionRow kMillimeterCaptions[] = {
    // Control, String
    {1274, kStringUnitMillimeter},
    {1275, kStringUnitMillimeter},
    {1268, kStringWidthRangeMillimeter},
    {1271, kStringLengthRangeMillimeter},
};

constexpr CaptionRow kInchCaptions[] = {
    // Control, String
    {1274, kStringUnitInch},
    {1275, kStringUnitInch},
    {1268, kStringWidthRangeInch},
    {1271, kStringLengthRangeInch},
};
// clang-format on

// One message's view of the dialog.
struct Dialog {
  WindowHandle window;
  UIContext& context;
  CustomPaperDialogState& state;

  ModuleHandle texts() const { return context.languageModule; }
  PublicDevmode& shared() const { return *context.publicPointer; }
  WindowHandle Item(std::int32_t control) const {
    return World().windows.GetDlgItem(window, control);
  }
  void EnableButtons(bool save, bool remove) const {
    EnableControl(window, kSaveButton, save);
    EnableControl(window, kDeleteButton, remove);
  }
};

PaperUnit UnitOfLocale() {
  return IsA4Locale() ? PaperUnit::kMillimeters : PaperUnit::kInches;
}

// ---- Names that are shown -----------------------------------------------------------------------

// Reads what the name's box shows, without the blanks at both ends.
std::u16string_view ReadName(const Dialog& dialog) {
  dialog.state.nameBox.GetText(dialog.state.name);
  return FieldText(dialog.state.name);
}

// Shows the name of what was loaded: a row of the list, or the text where there is no such row.
// Nothing is to be saved then, and a name that is stored can be deleted.
void ShowLoadedName(const Dialog& dialog, std::intptr_t row, std::u16string_view text) {
  CustomPaperDialogState& state = dialog.state;
  if (row >= 0) {
    state.nameBox.SelectRow(row);
  } else {
    state.nameBox.ShowText(text);
  }
  state.nameBox.ReadText(state.name);
  dialog.EnableButtons(false, state.nameBox.RowOfName(FieldText(state.name)) >= 0);
}

// ---- The unit -----------------------------------------------------------------------------------

void SetUnit(const Dialog& dialog, PaperUnit unit) {
  Windows& windows = World().windows;
  const bool millimeters = unit == PaperUnit::kMillimeters;
  dialog.state.sizes.SetUnit(unit);
  windows.CheckDlgButton(dialog.window, kMillimetersRadio,
                         millimeters ? kBstChecked : kBstUnchecked);
  windows.CheckDlgButton(dialog.window, kInchesRadio, millimeters ? kBstUnchecked : kBstChecked);
  if (millimeters) {
    SetCaptions(dialog.window, dialog.texts(), kMillimeterCaptions);
  } else {
    SetCaptions(dialog.window, dialog.texts(), kInchCaptions);
  }
}

void ShowSize(const Dialog& dialog) {
  dialog.state.sizes.Show(dialog.state.paper);
}

void OnUnit(const Dialog& dialog, PaperUnit unit) {
  if (unit != dialog.state.sizes.unit()) {
    SetUnit(dialog, unit);
    ShowSize(dialog);
  }
}

// ---- The paper in force -------------------------------------------------------------------------

std::uint16_t PaperInForce(const Dialog& dialog) {
  return static_cast<std::uint16_t>(dialog.shared().dmPaperSize);
}

// The user's own paper that is in force. Result: false when another one is, or when it is gone.
bool FindPaperInForce(const Dialog& dialog, CustomPaperRecord& paper) {
  return FindChoosablePaper(PaperInForce(dialog), paper);
}

// The size that is shown becomes the paper in force.
void ChooseShownPaper(const Dialog& dialog) {
  ChooseStoredPaper(dialog.context, dialog.state.paper);
}

// ---- Loading ------------------------------------------------------------------------------------

// A size that isn't stored yet.
void MakePaper(const Dialog& dialog, double width_mm, double length_mm) {
  CustomPaperRecord& paper = dialog.state.paper;
  char16_t untitled[kEditTextUnits] = {};
  ReadUntitledName(dialog.window, untitled);
  paper = {};
  StoreLength(paper, kWidthSide, {width_mm, PaperUnit::kMillimeters, 1});
  StoreLength(paper, kLengthSide, {length_mm, PaperUnit::kMillimeters, 1});
  CopyText(paper.Name, FieldText(untitled));
  paper.PaperId = static_cast<std::uint32_t>(NextCustomPaperId());
  paper.Unit = static_cast<std::uint32_t>(dialog.state.sizes.unit());
}

// Loads the first stored size, or a new one where nothing is stored, and shows it under its name.
// Result: whether it is a stored one.
bool LoadFirstPaper(const Dialog& dialog, PaperName& name) {
  constexpr double kWidth_mm = 210;
  constexpr double kLength_mm = 297;
  if (ReadFirstPaper(dialog.state.paper, name)) {
    return true;
  }
  MakePaper(dialog, kWidth_mm, kLength_mm);
  CopyText(name, FieldText(dialog.state.paper.Name));
  return false;
}

// Loads the paper in force, or what stands in for one that isn't stored, and its name.
void LoadPaper(const Dialog& dialog, PaperName& name) {
  CustomPaperRecord& paper = dialog.state.paper;
  if (FindPaperInForce(dialog, paper)) {
    CopyText(name, FieldText(paper.Name));
  } else {
    LoadFirstPaper(dialog, name);
  }
}

// ---- Opening ------------------------------------------------------------------------------------

void LoadTexts(const Dialog& dialog) {
  char16_t title[kMaxPathUnits] = {};
  SetCaptions(dialog.window, dialog.texts(), kCaptions);
  if (LoadExistingString(dialog.texts(), kStringCustomSizesTitle, title)) {
    World().windows.SetWindowTextW(dialog.window, title);
  }
}

// The unit of the paper in force when that is one of the user's, else the one of the country.
PaperUnit UnitAtOpening(const Dialog& dialog) {
  CustomPaperRecord record = {};
  return FindPaperInForce(dialog, record) ? UnitOf(record) : UnitOfLocale();
}

void Open(const Dialog& dialog) {
  CustomPaperDialogState& state = dialog.state;
  state.open = false;
  LoadTexts(dialog);
  PaperSizeBoxes::LimitTexts(dialog.window);
  if (!CustomPaperStore().Init()) {
    WarnPaperStore(dialog.window);
    return;
  }
  const PublicDevmode& shared = dialog.shared();
  state.savedWidth = shared.dmPaperWidth;
  state.savedLength = shared.dmPaperLength;
  state.savedSize = shared.dmPaperSize;
  state.savedFields = shared.dmFields;
  state.selectionDeleted = false;
  state.sizes.Attach(dialog.window);
  state.nameBox.Attach(dialog.window, kNameCombo);
  state.open = true;
  state.nameBox.Fill();
  SetUnit(dialog, UnitAtOpening(dialog));
  PaperName name = {};
  LoadPaper(dialog, name);
  ShowSize(dialog);
  ShowLoadedName(dialog, state.nameBox.RowOfPaper(PaperInForce(dialog)), FieldText(name));
}

// ---- Editing ------------------------------------------------------------------------------------

// Another size is no longer the one of that name: the user has to give it a new one.
void SizeChanged(const Dialog& dialog) {
  CustomPaperDialogState& state = dialog.state;
  ReadUntitledName(dialog.window, state.name);
  state.nameBox.ShowText(FieldText(state.name));
  dialog.EnableButtons(false, false);
}

// ---- Names --------------------------------------------------------------------------------------

PaperNameKind JudgeShownName(const Dialog& dialog) {
  char16_t untitled[kEditTextUnits] = {};
  ReadUntitledName(dialog.window, untitled);
  return JudgePaperName(ReadName(dialog), FieldText(untitled), dialog.texts());
}

// The rules of a name that is being given. Result: what the name is, without refused characters.
PaperNameKind ApplyNameRules(const Dialog& dialog) {
  PaperNameKind kind = JudgeShownName(dialog);
  if (kind == PaperNameKind::kWithRefusedUnits) {
    CleanName(dialog.state.name);
    dialog.state.nameBox.PutBack(FieldText(dialog.state.name));
    kind = JudgeShownName(dialog);
  }
  switch (kind) {
    case PaperNameKind::kUntitled:
      EnableControl(dialog.window, kSaveButton, false);
      break;
    case PaperNameKind::kFree:
      dialog.EnableButtons(true, false);
      break;
    default:
      dialog.EnableButtons(false, false);
      break;
  }
  return kind;
}

// A row of the list was chosen. Its name is the row's: the box shows it only later.
void OnNameChosen(const Dialog& dialog) {
  CustomPaperDialogState& state = dialog.state;
  PaperName name = {};
  state.nameBox.ReadRow(state.nameBox.SelectedRow(), name);
  if (name[0] == u'\0') {
    return;
  }
  CopyText(state.name, FieldText(name));
  if (CustomPaperRecord chosen = {}; ReadPaper(name, chosen)) {
    state.paper = chosen;
    SetUnit(dialog, UnitOf(chosen));
    ShowSize(dialog);
    ChooseShownPaper(dialog);
  }
  // One that can't be read can still be deleted.
  dialog.EnableButtons(false, true);
}

// ---- Buttons ------------------------------------------------------------------------------------

// The id under which a name is saved: that of the record that it replaces, or the next free one.
// Result: false when none is free.
bool FindIdToSave(const char16_t* name, std::uint32_t* paperId) {
  if (CustomPaperRecord replaced = {}; ReadPaper(name, replaced)) {
    *paperId = replaced.PaperId;
    return true;
  }
  const std::int32_t next = NextCustomPaperId();
  *paperId = static_cast<std::uint32_t>(next);
  return next >= 0;
}

// A record of that name may be replaced only when the user says so.
bool MayReplace(const Dialog& dialog, std::u16string_view name) {
  return !IsPaperStored(name) ||
         AskYesNo(dialog.window, dialog.texts(), kStringReplaceCustomSizeQuestion, kStringBoxTitle);
}

// The name to save. Result: false when the box shows none that may be saved.
bool ReadNameToSave(const Dialog& dialog, std::span<char16_t> name) {
  const std::u16string_view shown = ReadName(dialog);
  if (shown.empty()) {
    World().windows.SetFocus(dialog.Item(kNameCombo));
    return false;
  }
  // A name that code has put into the box has met no rule yet.
  if (shown.size() > kMostPaperNameUnits || ApplyNameRules(dialog) != PaperNameKind::kFree) {
    return false;
  }
  CopyText(name, FieldText(dialog.state.name));
  return true;
}

// The size that was saved becomes the paper in force, and is shown as it is stored.
void ShowSaved(const Dialog& dialog, const CustomPaperRecord& paper) {
  CustomPaperDialogState& state = dialog.state;
  const std::u16string_view name = FieldText(paper.Name);
  state.paper = paper;
  ChooseShownPaper(dialog);
  ShowSize(dialog);
  state.nameBox.Fill();
  ShowLoadedName(dialog, state.nameBox.RowOfName(name), name);
}

void Save(const Dialog& dialog) {
  char16_t name[kEditTextUnits] = {};
  if (!ReadNameToSave(dialog, name)) {
    return;
  }
  const CustomPaperStore store;
  CustomPaperRecord paper = dialog.state.paper;
  // A full store refuses a name that it has already, too, although nothing would be added.
  if (store.Count() >= store.MaxCount()) {
    WarnString(dialog.window, dialog.texts(), kStringTooManyCustomSizes, kStringBoxTitle);
    return;
  }
  if (!dialog.state.sizes.Take(paper) || !MayReplace(dialog, FieldText(name)) ||
      !FindIdToSave(name, &paper.PaperId)) {
    return;
  }
  paper.Unit = static_cast<std::uint32_t>(dialog.state.sizes.unit());
  CopyText(paper.Name, FieldText(name));
  if (store.Save(name, paper)) {
    ShowSaved(dialog, paper);
  }
}

// What is in force when a record was deleted: the first that is left, or the country's paper.
void ShowWhatIsLeft(const Dialog& dialog) {
  PaperName name = {};
  const bool left = LoadFirstPaper(dialog, name);
  if (left) {
    SetUnit(dialog, UnitOf(dialog.state.paper));
    ChooseShownPaper(dialog);
  } else {
    SetUnit(dialog, UnitOfLocale());
    dialog.state.paper.Unit = static_cast<std::uint32_t>(dialog.state.sizes.unit());
    ChooseTablePaperWithSize(dialog.context, PaperOfLocale().id);
  }
  ShowSize(dialog);
  ShowLoadedName(dialog, dialog.state.nameBox.RowOfName(FieldText(name)), FieldText(name));
}

void Delete(const Dialog& dialog) {
  CustomPaperDialogState& state = dialog.state;
  CustomPaperRecord deleted = {};
  state.nameBox.ReadText(state.name);
  const bool known = ReadPaper(state.name, deleted);
  if (!CustomPaperStore().Delete(state.name)) {
    return;
  }
  // Another record may bear the same id: the paper isn't gone then.
  if (known && std::cmp_equal(deleted.PaperId, state.savedSize) &&
      !FindChoosablePaper(deleted.PaperId, deleted)) {
    state.selectionDeleted = true;
  }
  state.nameBox.RemoveRow(state.nameBox.RowOfName(FieldText(state.name)));
  ShowWhatIsLeft(dialog);
}

// The largest size of the country's unit, its numbers always taken as millimeters: in inches they
// lie far below the least, so that the boxes show 2.95 by 5.83. Users know it so.
void Defaults(const Dialog& dialog) {
  SetUnit(dialog, UnitOfLocale());
  const SizeLimits& limits = dialog.state.sizes.limits();
  MakePaper(dialog, limits.width.most, limits.length.most);
  ShowSize(dialog);
  dialog.state.nameBox.ShowText(FieldText(dialog.state.paper.Name));
  ReadName(dialog);
  dialog.EnableButtons(false, false);
}

// ---- The end ------------------------------------------------------------------------------------

void End(const Dialog& dialog, bool accepted) {
  dialog.state.open = false;
  World().windows.EndDialog(dialog.window, accepted ? 1 : 0);
}

void Accept(const Dialog& dialog) {
  if (World().windows.IsWindowEnabled(dialog.Item(kSaveButton))) {
    Save(dialog);
  }
  End(dialog, true);
}

// Records that were saved or deleted stay so.
void Cancel(const Dialog& dialog) {
  const CustomPaperDialogState& state = dialog.state;
  const bool millimeters = state.sizes.unit() == PaperUnit::kMillimeters;
  if (state.selectionDeleted) {
    ChooseTablePaperWithSize(dialog.context, millimeters ? kPaperA4 : kPaperLetter);
  } else {
    dialog.shared().dmPaperWidth = state.savedWidth;
    dialog.shared().dmPaperLength = state.savedLength;
    dialog.shared().dmPaperSize = state.savedSize;
  }
  dialog.shared().dmFields = state.savedFields;
  End(dialog, false);
}

// ---- Messages -----------------------------------------------------------------------------------

// A button that its own click has disabled would keep the focus, out of any key's reach.
void LeaveDisabledButton(const Dialog& dialog, std::int32_t button) {
  if (!World().windows.IsWindowEnabled(dialog.Item(button))) {
    World().windows.SetFocus(dialog.Item(kNameCombo));
  }
}

void OnButton(const Dialog& dialog, std::int32_t control) {
  switch (control) {
    case kMillimetersRadio:
      OnUnit(dialog, PaperUnit::kMillimeters);
      break;
    case kInchesRadio:
      OnUnit(dialog, PaperUnit::kInches);
      break;
    case kSaveButton:
      Save(dialog);
      LeaveDisabledButton(dialog, control);
      break;
    case kDeleteButton:
      Delete(dialog);
      LeaveDisabledButton(dialog, control);
      break;
    case kDefaultsButton:
      Defaults(dialog);
      break;
    case kIdOk:
      Accept(dialog);
      break;
    case kIdCancel:
      Cancel(dialog);
      break;
    default:
      break;
  }
}

void OnCommand(const Dialog& dialog, std::int32_t control, std::uint16_t code) {
  if (dialog.state.sizes.OnCommand(control, code, dialog.state.paper)) {
    SizeChanged(dialog);
  } else if (control == kNameCombo && code == kCbnEditChange) {
    ApplyNameRules(dialog);
  } else if (control == kNameCombo && code == kCbnSelChange) {
    OnNameChosen(dialog);
  } else if (code == kBnClicked) {
    OnButton(dialog, control);
  }
}

// A dialog that has nothing to show: it can be left, and it has help.
void OnEmptyDialogsCommand(WindowHandle window, std::int32_t control, std::uint16_t code) {
  if (code == kBnClicked && (control == kIdOk || control == kIdCancel)) {
    World().windows.EndDialog(window, control == kIdOk ? 1 : 0);
  }
}

void OnNotify(const Dialog& dialog, std::intptr_t lParam) {
  if (PointedAt<const NotifyHeader>(lParam)->code != kUdnDeltaPos) {
    return;
  }
  const auto& step = *PointedAt<const NotifyUpDown>(lParam);
  if (dialog.state.sizes.OnStep(static_cast<std::int32_t>(step.hdr.idFrom), step.iDelta < 0,
                                dialog.state.paper)) {
    SizeChanged(dialog);
  }
}

// The state of the dialog, once it shows something; null before and after.
CustomPaperDialogState* OpenState() {
  auto* state = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper);
  return state != nullptr && state->open ? state : nullptr;
}

void Start(WindowHandle window, std::intptr_t context) {
  World().windows.SetWindowLongPtrW(window, kGwlpUserData, context);
  auto* state = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper);
  if (state != nullptr && context != 0) {
    Open({window, *PointedAt<UIContext>(context), *state});
  }
}

std::intptr_t CustomPaperDialogProcedure(WindowHandle window, std::uint32_t message,
                                         std::uintptr_t wParam, std::intptr_t lParam) {
  if (message == kWmInitDialog) {
    Start(window, lParam);
    return 1;
  }
  UIContext* context = PageContext(window);
  CustomPaperDialogState* state = OpenState();
  const bool isShown = context != nullptr && state != nullptr;
  const std::int32_t control = LowWord(wParam);
  const std::uint16_t code = HighWord(wParam);
  switch (message) {
    case kWmCommand:
      if (control == kHelpButton && code == kBnClicked) {
        ShowPageHelp(window, kHelpTopic);
      } else if (isShown) {
        OnCommand({window, *context, *state}, control, code);
      } else {
        OnEmptyDialogsCommand(window, control, code);
      }
      return 0;
    case kWmNotify:
      if (isShown && lParam != 0) {
        OnNotify({window, *context, *state}, lParam);
      }
      return 0;
    case kWmDestroy:
      if (isShown) {
        state->open = false;
      }
      return 0;
    default:
      return 0;
  }
}

}  // namespace

bool ShowCustomPaperDialog(WindowHandle page, UIContext& context) {
  return World().windows.DialogBoxParamW(context.languageModule, kTemplate, page,
                                         Guarded<CustomPaperDialogProcedure>,
                                         reinterpret_cast<std::intptr_t>(&context)) == 1;
}

}  // namespace ostrel
