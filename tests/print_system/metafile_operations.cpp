#include "metafile_operations.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace ostrel::print_system {
namespace {

using headless::DrawingCall;
using headless::DrawingOperation;

constexpr std::int64_t kNothing = -1;  // the colour of a hollow brush, of an empty pen

// What an escape's comment begins with.
constexpr std::array<char, 8> kEscapeMark = {'E', 's', 'c', 'a', 'p', 'e', ':', ' '};
struct EscapeComment {
  std::array<char, 8> mark;
  std::int64_t code;
  std::int64_t outputBytes;
};

template <typename Record>
const Record& As(const ENHMETARECORD& record) {
  if (record.nSize < sizeof(Record)) {
    throw std::runtime_error("a metafile's record is cut short");
  }
  return *reinterpret_cast<const Record*>(&record);
}

// Bytes of a record at an offset from its start.
std::span<const std::byte> BytesAt(const ENHMETARECORD& record, std::size_t offset,
                                   std::size_t count) {
  if (offset > record.nSize || count > record.nSize - offset) {
    throw std::runtime_error("a metafile's record is cut short");
  }
  return {reinterpret_cast<const std::byte*>(&record) + offset, count};
}

std::vector<std::int64_t> Corners(const RECTL& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

std::u16string FaceOf(const wchar_t (&face)[LF_FACESIZE]) {
  return {face, std::find(face, face + LF_FACESIZE, L'\0')};
}

DrawingOperation SelectedBrush(std::int64_t color) {
  return {.call = DrawingCall::kSelectObject, .numbers = {headless::kSelectedBrush, color}};
}

DrawingOperation SelectedPen(std::int64_t color, std::int64_t width) {
  return {.call = DrawingCall::kSelectObject, .numbers = {headless::kSelectedPen, color, width}};
}

DrawingOperation SelectedFont(const LOGFONTW& font) {
  return {.call = DrawingCall::kSelectObject,
          .numbers = {headless::kSelectedFont, font.lfHeight, font.lfWidth, font.lfEscapement,
                      font.lfOrientation, font.lfWeight, font.lfItalic, font.lfUnderline,
                      font.lfStrikeOut, font.lfCharSet, font.lfOutPrecision},
          .text = FaceOf(font.lfFaceName)};
}

// One of the system's own objects, which metafiles name by their numbers.
DrawingOperation SelectedStock(DWORD index) {
  switch (index) {
    case WHITE_BRUSH:
      return SelectedBrush(0xFFFFFF);
    case LTGRAY_BRUSH:
      return SelectedBrush(0xC0C0C0);
    case GRAY_BRUSH:
      return SelectedBrush(0x808080);
    case DKGRAY_BRUSH:
      return SelectedBrush(0x404040);
    case BLACK_BRUSH:
      return SelectedBrush(0);
    case NULL_BRUSH:
      return SelectedBrush(kNothing);
    case WHITE_PEN:
      return SelectedPen(0xFFFFFF, 1);
    case BLACK_PEN:
      return SelectedPen(0, 1);
    case NULL_PEN:
      return SelectedPen(kNothing, 0);
    default:
      return SelectedFont({});  // the system's fonts are all told alike
  }
}

// ---- Records ------------------------------------------------------------------------------------

class Reader {
 public:
  void Take(const ENHMETARECORD& record);

  std::vector<DrawingOperation> operations;

 private:
  void Add(DrawingCall call, std::vector<std::int64_t> numbers = {}) {
    operations.push_back({.call = call, .numbers = std::move(numbers)});
  }
  bool TakeSetting(const ENHMETARECORD& record);
  bool TakeObject(const ENHMETARECORD& record);
  bool TakeShape(const ENHMETARECORD& record);
  void TakeSelection(DWORD object);
  void TakeText(const EMREXTTEXTOUTW& record);
  void TakePicture(const EMRSTRETCHDIBITS& record);
  void TakeFilledRect(const EMRBITBLT& record);
  void TakeComment(const EMRGDICOMMENT& record);
  template <typename PointType>
  void TakePolygon(const ENHMETARECORD& record, DWORD count, std::size_t offset);

  std::map<DWORD, DrawingOperation> objects_;  // as they will be when they are selected
  std::int64_t brush_ = 0xFFFFFF;
};

// What drawing goes by.
bool Reader::TakeSetting(const ENHMETARECORD& record) {
  // A mode may be below 0, an alignment takes all bits.
  const auto mode = [&] {
    return std::int64_t{static_cast<std::int32_t>(As<EMRSETBKMODE>(record).iMode)};
  };
  switch (record.iType) {
    case EMR_SETWINDOWORGEX: {
      const POINTL& origin = As<EMRSETWINDOWORGEX>(record).ptlOrigin;
      Add(DrawingCall::kSetWindowOrgEx, {origin.x, origin.y});
      return true;
    }
    case EMR_SETVIEWPORTORGEX: {
      const POINTL& origin = As<EMRSETVIEWPORTORGEX>(record).ptlOrigin;
      Add(DrawingCall::kSetViewportOrgEx, {origin.x, origin.y});
      return true;
    }
    case EMR_SETWINDOWEXTEX: {
      const SIZEL& extent = As<EMRSETWINDOWEXTEX>(record).szlExtent;
      Add(DrawingCall::kSetWindowExtEx, {extent.cx, extent.cy});
      return true;
    }
    case EMR_SETVIEWPORTEXTEX: {
      const SIZEL& extent = As<EMRSETVIEWPORTEXTEX>(record).szlExtent;
      Add(DrawingCall::kSetViewportExtEx, {extent.cx, extent.cy});
      return true;
    }
    case EMR_SETBKMODE:
      Add(DrawingCall::kSetBkMode, {mode()});
      return true;
    case EMR_SETROP2:
      Add(DrawingCall::kSetROP2, {mode()});
      return true;
    case EMR_SETPOLYFILLMODE:
      Add(DrawingCall::kSetPolyFillMode, {mode()});
      return true;
    case EMR_SETSTRETCHBLTMODE:
      Add(DrawingCall::kSetStretchBltMode, {mode()});
      return true;
    case EMR_SETTEXTALIGN:
      Add(DrawingCall::kSetTextAlign, {As<EMRSETTEXTALIGN>(record).iMode});
      return true;
    case EMR_SETTEXTCOLOR:
      Add(DrawingCall::kSetTextColor, {As<EMRSETTEXTCOLOR>(record).crColor});
      return true;
    case EMR_SETBKCOLOR:
      Add(DrawingCall::kSetBkColor, {As<EMRSETBKCOLOR>(record).crColor});
      return true;
    default:
      return false;
  }
}

void Reader::TakeSelection(DWORD object) {
  constexpr DWORD kStock = 0x80000000;  // ENHMETA_STOCK_OBJECT
  const auto made = objects_.find(object);
  if ((object & kStock) == 0 && made == objects_.end()) {
    throw std::runtime_error("a metafile selects an object that it hasn't made");
  }
  operations.push_back((object & kStock) != 0 ? SelectedStock(object & ~kStock) : made->second);
  const std::vector<std::int64_t>& numbers = operations.back().numbers;
  if (numbers[0] == headless::kSelectedBrush) {
    brush_ = numbers[1];
  }
}

bool Reader::TakeObject(const ENHMETARECORD& record) {
  switch (record.iType) {
    case EMR_CREATEBRUSHINDIRECT: {
      const auto& brush = As<EMRCREATEBRUSHINDIRECT>(record);
      const bool isHollow = brush.lb.lbStyle == BS_NULL;
      objects_[brush.ihBrush] = SelectedBrush(isHollow ? kNothing : brush.lb.lbColor);
      return true;
    }
    case EMR_CREATEPEN: {
      const auto& pen = As<EMRCREATEPEN>(record);
      const bool isEmpty = pen.lopn.lopnStyle == PS_NULL;
      objects_[pen.ihPen] =
          isEmpty ? SelectedPen(kNothing, 0)
                  : SelectedPen(pen.lopn.lopnColor, std::max<LONG>(pen.lopn.lopnWidth.x, 1));
      return true;
    }
    case EMR_EXTCREATEFONTINDIRECTW: {
      // Only its head is always there.
      constexpr std::size_t kNeeded = offsetof(EMREXTCREATEFONTINDIRECTW, elfw) + sizeof(LOGFONTW);
      static_cast<void>(BytesAt(record, 0, kNeeded));
      const auto& font = *reinterpret_cast<const EMREXTCREATEFONTINDIRECTW*>(&record);
      objects_[font.ihFont] = SelectedFont(font.elfw.elfLogFont);
      return true;
    }
    case EMR_SELECTOBJECT:
      TakeSelection(As<EMRSELECTOBJECT>(record).ihObject);
      return true;
    case EMR_DELETEOBJECT:
      objects_.erase(As<EMRDELETEOBJECT>(record).ihObject);
      return true;
    default:
      return false;
  }
}

template <typename PointType>
void Reader::TakePolygon(const ENHMETARECORD& record, DWORD count, std::size_t offset) {
  const std::span<const std::byte> bytes = BytesAt(record, offset, count * sizeof(PointType));
  DrawingOperation polygon = {.call = DrawingCall::kPolygon};
  for (DWORD i = 0; i < count; ++i) {
    PointType point = {};
    std::memcpy(&point, bytes.data() + i * sizeof(point), sizeof(point));
    polygon.points.push_back({point.x, point.y});
  }
  operations.push_back(std::move(polygon));
}

void Reader::TakeText(const EMREXTTEXTOUTW& record) {
  constexpr DWORD kWithoutPlace = 0x100;  // ETO_NO_RECT
  const EMRTEXT& text = record.emrtext;
  const auto& whole = *reinterpret_cast<const ENHMETARECORD*>(&record);
  const auto bytes = BytesAt(whole, text.offString, text.nChars * sizeof(char16_t));
  DrawingOperation operation = {
      .call = DrawingCall::kExtTextOutW,
      .numbers = {text.ptlReference.x, text.ptlReference.y, text.fOptions & ~kWithoutPlace}};
  operation.text.resize(text.nChars);
  std::memcpy(operation.text.data(), bytes.data(), bytes.size());
  // Without a place there stands one that ends before it begins.
  if (text.rcl.left <= text.rcl.right && text.rcl.top <= text.rcl.bottom) {
    operation.place = Rect{text.rcl.left, text.rcl.top, text.rcl.right, text.rcl.bottom};
  }
  operations.push_back(std::move(operation));
}

void Reader::TakePicture(const EMRSTRETCHDIBITS& record) {
  const auto& whole = *reinterpret_cast<const ENHMETARECORD*>(&record);
  const auto form = BytesAt(whole, record.offBmiSrc, sizeof(BITMAPINFOHEADER));
  BITMAPINFOHEADER header = {};
  std::memcpy(&header, form.data(), sizeof(header));
  const auto rows = BytesAt(whole, record.offBitsSrc, record.cbBitsSrc);
  operations.push_back(
      {.call = DrawingCall::kStretchDIBits,
       .numbers = {record.xDest, record.yDest, record.cxDest, record.cyDest, record.xSrc,
                   record.ySrc, record.cxSrc, record.cySrc, record.dwRop},
       .bytes = {rows.begin(), rows.end()},
       .picture = {header.biWidth, header.biHeight}});
}

// A rectangle is filled by selecting the brush, drawing its pattern, and selecting the brush
// before.
void Reader::TakeFilledRect(const EMRBITBLT& record) {
  if (record.dwRop != PATCOPY || record.cbBmiSrc != 0) {
    throw std::runtime_error("a metafile copies a picture");
  }
  Add(DrawingCall::kFillRect, {record.xDest, record.yDest, record.xDest + record.cxDest,
                               record.yDest + record.cyDest, brush_});
}

void Reader::TakeComment(const EMRGDICOMMENT& record) {
  const auto& whole = *reinterpret_cast<const ENHMETARECORD*>(&record);
  const auto bytes = BytesAt(whole, offsetof(EMRGDICOMMENT, Data), record.cbData);
  EscapeComment comment = {};
  if (bytes.size() < sizeof(comment)) {
    return;
  }
  std::memcpy(&comment, bytes.data(), sizeof(comment));
  if (comment.mark == kEscapeMark) {
    const auto input = bytes.subspan(sizeof(comment));
    operations.push_back({.call = DrawingCall::kExtEscape,
                          .numbers = {comment.code, comment.outputBytes},
                          .bytes = {input.begin(), input.end()}});
  }
}

bool Reader::TakeShape(const ENHMETARECORD& record) {
  // The last column and the last row belong to a shape of a metafile.
  const auto withLast = [](RECTL box) {
    return Corners({box.left, box.top, box.right + 1, box.bottom + 1});
  };
  switch (record.iType) {
    case EMR_BEGINPATH:
      Add(DrawingCall::kBeginPath);
      return true;
    case EMR_ENDPATH:
      Add(DrawingCall::kEndPath);
      return true;
    case EMR_FILLPATH:
      Add(DrawingCall::kFillPath);
      return true;
    case EMR_ELLIPSE:
      Add(DrawingCall::kEllipse, withLast(As<EMRELLIPSE>(record).rclBox));
      return true;
    case EMR_RECTANGLE:
      Add(DrawingCall::kRectangle, withLast(As<EMRRECTANGLE>(record).rclBox));
      return true;
    case EMR_POLYGON:
      TakePolygon<POINTL>(record, As<EMRPOLYGON>(record).cptl, offsetof(EMRPOLYGON, aptl));
      return true;
    case EMR_POLYGON16:
      TakePolygon<POINTS>(record, As<EMRPOLYGON16>(record).cpts, offsetof(EMRPOLYGON16, apts));
      return true;
    case EMR_EXTTEXTOUTW:
      TakeText(As<EMREXTTEXTOUTW>(record));
      return true;
    case EMR_STRETCHDIBITS:
      TakePicture(As<EMRSTRETCHDIBITS>(record));
      return true;
    case EMR_BITBLT:
      TakeFilledRect(As<EMRBITBLT>(record));
      return true;
    default:
      return false;
  }
}

void Reader::Take(const ENHMETARECORD& record) {
  if (record.iType == EMR_HEADER || record.iType == EMR_EOF) {
    return;
  }
  if (record.iType == EMR_GDICOMMENT) {
    TakeComment(As<EMRGDICOMMENT>(record));
  } else if (!TakeSetting(record) && !TakeObject(record) && !TakeShape(record)) {
    throw std::runtime_error("a metafile's record of type " + std::to_string(record.iType));
  }
}

// An exception must not run through the system's own frames.
struct Reading {
  Reader reader;
  std::string fault;
};

int CALLBACK TakeRecord(HDC /*context*/, HANDLETABLE* /*objects*/, const ENHMETARECORD* record,
                        int /*objectCount*/, LPARAM word) {
  auto& reading = *reinterpret_cast<Reading*>(word);
  try {
    reading.reader.Take(*record);
    return 1;
  } catch (const std::exception& fault) {
    reading.fault = fault.what();
    return 0;
  }
}

}  // namespace

std::vector<DrawingOperation> OperationsOf(HENHMETAFILE metafile) {
  Reading reading;
  const BOOL isWhole = EnumEnhMetaFile(nullptr, metafile, TakeRecord, &reading, nullptr);
  if (!reading.fault.empty() || isWhole == FALSE) {
    throw std::runtime_error(reading.fault.empty() ? "no metafile" : reading.fault);
  }
  return std::move(reading.reader.operations);
}

namespace {

// A mode that was refused isn't in force after its operation.
bool IsRefused(const DrawingOperation& operation) {
  const headless::DrawingState& state = operation.state;
  switch (operation.call) {
    case DrawingCall::kSetBkMode:
      return operation.numbers.at(0) != state.backgroundMode;
    case DrawingCall::kSetROP2:
      return operation.numbers.at(0) != state.rasterMode;
    case DrawingCall::kSetPolyFillMode:
      return operation.numbers.at(0) != state.polyFillMode;
    default:
      return false;
  }
}

// A shape with its corners in order; nothing for one without room.
std::optional<DrawingOperation> InOrder(DrawingOperation shape) {
  std::vector<std::int64_t>& corners = shape.numbers;
  for (const std::size_t side : {std::size_t{0}, std::size_t{1}}) {
    if (corners.at(side) == corners.at(side + 2)) {
      return std::nullopt;
    }
    if (corners[side] > corners[side + 2]) {
      std::swap(corners[side], corners[side + 2]);
    }
  }
  return shape;
}

}  // namespace

std::vector<DrawingOperation> RecordedByMetafiles(std::span<const DrawingOperation> operations) {
  std::vector<DrawingOperation> recorded;
  for (const DrawingOperation& operation : operations) {
    if (operation.call == DrawingCall::kEllipse || operation.call == DrawingCall::kRectangle) {
      if (const auto shape = InOrder(operation); shape) {
        recorded.push_back(*shape);
      }
    } else if (operation.call == DrawingCall::kFillRect) {
      const std::optional<std::uint32_t>& brush = operation.state.brush;
      recorded.push_back(SelectedBrush(operation.numbers.at(4)));
      recorded.push_back(operation);
      recorded.push_back(SelectedBrush(brush ? std::int64_t{*brush} : kNothing));
    } else if (!IsRefused(operation)) {
      recorded.push_back(operation);
    }
  }
  return recorded;
}

Metafile::Metafile(const wchar_t* printer)
    : model_(CreateICW(L"WINSPOOL", printer, nullptr, nullptr)),
      context_(CreateEnhMetaFileW(model_, nullptr, nullptr, nullptr)) {}

Metafile::~Metafile() {
  DeleteEnhMetaFile(context_ == nullptr ? nullptr : CloseEnhMetaFile(context_));
  DeleteDC(model_);
}

std::vector<DrawingOperation> Metafile::Operations() {
  const std::unique_ptr<HENHMETAFILE__, decltype(&DeleteEnhMetaFile)> metafile(
      CloseEnhMetaFile(std::exchange(context_, nullptr)), &DeleteEnhMetaFile);
  return OperationsOf(metafile.get());
}

void CommentEscape(HDC context, const DrawingOperation& escape) {
  const EscapeComment comment = {kEscapeMark, escape.numbers.at(0), escape.numbers.at(1)};
  std::vector<BYTE> bytes(sizeof(comment) + escape.bytes.size());
  std::memcpy(bytes.data(), &comment, sizeof(comment));
  if (!escape.bytes.empty()) {
    std::memcpy(bytes.data() + sizeof(comment), escape.bytes.data(), escape.bytes.size());
  }
  GdiComment(context, static_cast<UINT>(bytes.size()), bytes.data());
}

std::vector<std::string> LinesOf(std::span<const DrawingOperation> operations) {
  std::vector<std::string> lines;
  for (const DrawingOperation& operation : operations) {
    lines.push_back(Describe(operation));
  }
  return lines;
}

}  // namespace ostrel::print_system
