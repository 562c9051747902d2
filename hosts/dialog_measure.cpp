#include "dialog_measure.h"

#include "print_system_setup.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cwctype>
#include <map>

namespace ostrel {
namespace {

// What the platform leaves beside a text, in pixels of an unscaled display.
constexpr int kMarkRoom = 18;    // a box's or radio's mark and the gap behind it
constexpr int kFrameRoom = 18;   // both ends of a frame's caption
constexpr int kButtonRoom = 12;  // both edges of a button and the focus in them
constexpr int kListRoom = 4;     // both edges of a list's closed row

enum class Kind { kMark, kFrame, kButton, kLabel, kList, kOther };

struct Control {
  HWND window;
  int id;
  Kind kind;
  RECT place;  // in the dialog
  std::wstring text;

  LONG width() const { return place.right - place.left; }
  LONG height() const { return place.bottom - place.top; }
};

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  std::wstring lower = name;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](wchar_t unit) { return static_cast<wchar_t>(std::towlower(unit)); });
  return lower;
}

Kind ButtonKind(LONG_PTR style) {
  switch (style & BS_TYPEMASK) {
    case BS_GROUPBOX:
      return Kind::kFrame;
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
      return Kind::kMark;
    default:
      return Kind::kButton;
  }
}

Kind KindOf(HWND window) {
  const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
  const std::wstring name = ClassOf(window);
  if (name == L"button") {
    return ButtonKind(style);
  }
  if (name == L"static") {
    return (style & SS_TYPEMASK) <= SS_RIGHT ? Kind::kLabel : Kind::kOther;
  }
  return name == L"combobox" ? Kind::kList : Kind::kOther;
}

Control Describe(HWND dialog, HWND window) {
  Control control = {.window = window,
                     .id = GetDlgCtrlID(window),
                     .kind = KindOf(window),
                     .place = {},
                     .text = {}};
  GetWindowRect(window, &control.place);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&control.place), 2);
  if (control.place.left > control.place.right) {  // a mirrored dialog counts from its right
    std::swap(control.place.left, control.place.right);
  }
  wchar_t text[300] = {};
  GetWindowTextW(window, text, 300);
  control.text = text;
  return control;
}

std::vector<Control> VisibleControls(HWND dialog) {
  std::vector<Control> controls;
  for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if ((GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0) {
      controls.push_back(Describe(dialog, child));
    }
  }
  return controls;
}

std::wstring WithoutKey(std::wstring text) {
  text.erase(std::remove(text.begin(), text.end(), L'&'), text.end());
  return text;
}

// Texts are measured in the dialog's own letters.
class Measure {
 public:
  Measure(HWND dialog, int dpi) : dialog_(dialog), dpi_(dpi), context_(GetDC(dialog)) {
    const auto font = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
    before_ = SelectObject(context_, font);
  }
  ~Measure() {
    SelectObject(context_, before_);
    ReleaseDC(dialog_, context_);
  }
  Measure(const Measure&) = delete;
  Measure& operator=(const Measure&) = delete;

  int Scaled(int pixels) const { return MulDiv(pixels, dpi_, 96); }

  SIZE Text(const std::wstring& text) const {
    SIZE size = {};
    GetTextExtentPoint32W(context_, text.c_str(), static_cast<int>(text.size()), &size);
    return size;
  }

  // The size of a label's text, in as many lines as it takes.
  SIZE Lines(const std::wstring& text, LONG width) const {
    RECT place = {0, 0, width, 0};
    DrawTextW(context_, text.c_str(), -1, &place, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    return {place.right, place.bottom};
  }

 private:
  HWND dialog_;
  int dpi_;
  HDC context_;
  HGDIOBJ before_;
};

std::string Name(const Control& control) {
  return "control " + std::to_string(control.id) +
         (control.text.empty() ? "" : " \"" + print_system::Utf8(control.text) + "\"");
}

class Faults {
 public:
  explicit Faults(std::vector<std::string>* lines) : lines_(lines) {}

  void Needs(const Control& control, SIZE needed, LONG width, LONG height) const {
    if (needed.cx > width) {
      lines_->push_back(Name(control) + ": " + std::to_string(needed.cx) +
                        " pixels wide, and there are " + std::to_string(width));
    }
    if (needed.cy > height) {
      lines_->push_back(Name(control) + ": " + std::to_string(needed.cy) +
                        " pixels high, and there are " + std::to_string(height));
    }
  }
  void Add(std::string line) const { lines_->push_back(std::move(line)); }

 private:
  std::vector<std::string>* lines_;
};

// The widest row of a list, in the room that the closed list has.
void CheckList(const Control& list, const Measure& measure, const Faults& faults) {
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  GetComboBoxInfo(list.window, &info);
  const LONG room = info.rcItem.right - info.rcItem.left - measure.Scaled(kListRoom);
  const auto rows = static_cast<int>(SendMessageW(list.window, CB_GETCOUNT, 0, 0));
  for (int row = 0; row < rows; ++row) {
    wchar_t text[300] = {};
    SendMessageW(list.window, CB_GETLBTEXT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(text));
    Control named = list;
    named.text = text;
    faults.Needs(named, measure.Text(text), room, list.height());
  }
}

void CheckText(const Control& control, const Measure& measure, const Faults& faults) {
  const std::wstring text = WithoutKey(control.text);
  switch (control.kind) {
    case Kind::kMark:
      faults.Needs(control, measure.Text(text), control.width() - measure.Scaled(kMarkRoom),
                   control.height());
      break;
    case Kind::kFrame:
      faults.Needs(control, measure.Text(text), control.width() - measure.Scaled(kFrameRoom),
                   control.height());
      break;
    case Kind::kButton:
      faults.Needs(control, measure.Text(text), control.width() - measure.Scaled(kButtonRoom),
                   control.height());
      break;
    case Kind::kLabel:
      faults.Needs(control, measure.Lines(text, control.width()), control.width(),
                   control.height());
      break;
    case Kind::kList:
      CheckList(control, measure, faults);
      break;
    case Kind::kOther:
      break;
  }
}

bool Holds(const RECT& outer, const RECT& inner) {
  return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
         inner.bottom <= outer.bottom;
}

// An up-down control and the box that it steps belong together and may touch.
bool IsPair(const Control& left, const Control& right) {
  const auto buddy = [](const Control& control) {
    return reinterpret_cast<HWND>(SendMessageW(control.window, UDM_GETBUDDY, 0, 0));
  };
  constexpr wchar_t kUpDown[] = L"msctls_updown32";
  return (ClassOf(left.window) == kUpDown && buddy(left) == right.window) ||
         (ClassOf(right.window) == kUpDown && buddy(right) == left.window);
}

// Two controls may share their room only as a frame and what stands wholly in it.
void CheckPair(const Control& left, const Control& right, const Faults& faults) {
  RECT shared = {};
  if (IntersectRect(&shared, &left.place, &right.place) == FALSE || IsPair(left, right)) {
    return;
  }
  const bool framed =
      (left.kind == Kind::kFrame && right.kind != Kind::kFrame && Holds(left.place, right.place)) ||
      (right.kind == Kind::kFrame && left.kind != Kind::kFrame && Holds(right.place, left.place));
  if (!framed) {
    faults.Add(Name(left) + " and " + Name(right) + " cover one another");
  }
}

bool IsFrameOfSameName(const Control& left, const Control& right) {
  return (left.kind == Kind::kFrame || right.kind == Kind::kFrame) && left.text == right.text;
}

void CheckKeys(const std::vector<Control>& controls, const Faults& faults) {
  std::map<wchar_t, const Control*> owners;
  for (const Control& control : controls) {
    const std::size_t mark = control.text.find(L'&');
    if (mark == std::wstring::npos || mark + 1 >= control.text.size()) {
      continue;
    }
    const auto key = static_cast<wchar_t>(std::towupper(control.text[mark + 1]));
    const auto [owner, first] = owners.emplace(key, &control);
    // A frame may be named after its main control: either key then leads there.
    if (!first && !IsFrameOfSameName(*owner->second, control)) {
      faults.Add(Name(control) + " has the access key of " + Name(*owner->second));
    }
  }
}

}  // namespace

std::vector<std::string> DialogFaults(HWND dialog, int dpi) {
  std::vector<std::string> lines;
  const Faults faults(&lines);
  const Measure measure(dialog, dpi);
  const std::vector<Control> controls = VisibleControls(dialog);
  RECT whole = {};
  GetClientRect(dialog, &whole);
  for (std::size_t i = 0; i < controls.size(); ++i) {
    CheckText(controls[i], measure, faults);
    if (!Holds(whole, controls[i].place)) {
      faults.Add(Name(controls[i]) + " sticks out of the dialog");
    }
    for (std::size_t other = i + 1; other < controls.size(); ++other) {
      CheckPair(controls[i], controls[other], faults);
    }
  }
  CheckKeys(controls, faults);
  return lines;
}

}  // namespace ostrel
