#include "stamp_cost.h"

#include "core/factory_watermarks.h"
#include "driver_words.h"
#include "job/page_stamp.h"
#include "job/render_driver_escapes.h"
#include "job/watermark_geometry.h"
#include "timing.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace ostrel::bench {
namespace {

constexpr int kRounds = 50;
constexpr int kStampsInARound = 10;  // 1,000 pages in all, half of them by each way
constexpr wchar_t kText[] = L"Confidential";
constexpr int kTextUnits = 12;

// A page that is being printed into a file.
class OpenPage {
 public:
  explicit OpenPage(const std::wstring& printer)
      : context_(CreateDCW(L"WINSPOOL", printer.c_str(), nullptr, nullptr)) {
    DOCINFOW document = {};
    document.cbSize = sizeof(document);
    document.lpszDocName = L"Bench";
    document.lpszOutput = L"C:\\stamps.ps";
    if (context_ == nullptr || StartDocW(context_, &document) <= 0 || StartPage(context_) <= 0) {
      throw std::runtime_error("no page to stamp");
    }
  }
  ~OpenPage() {
    EndPage(context_);
    EndDoc(context_);
    DeleteDC(context_);
  }
  OpenPage(const OpenPage&) = delete;
  OpenPage& operator=(const OpenPage&) = delete;

  HDC get() const { return context_; }
  Rect place() const {
    return {0, 0, GetDeviceCaps(context_, HORZRES), GetDeviceCaps(context_, VERTRES)};
  }

 private:
  HDC context_;
};

WatermarkData Record(bool hasBox) {
  WatermarkData record = kFactoryWatermarkRecords[1];
  record.PageWMTransparent = 0;
  record.PageWMBorder = hasBox ? 2 : 0;
  return record;
}

int CALLBACK TakeCharSet(const LOGFONTW* font, const TEXTMETRICW* /*metrics*/, DWORD /*type*/,
                         LPARAM word) {
  *reinterpret_cast<BYTE*>(word) = font->lfCharSet;
  return 0;
}

// The calls that a stamp makes, with the numbers of one that was worked out before.
class DirectStamp {
 public:
  DirectStamp(const OpenPage& page, const WatermarkData& record) : page_(page) {
    const StampAngle angle = AngleOf(record.PageWMAngle);
    font_.lfEscapement = font_.lfOrientation = angle.tenths;
    font_.lfHeight =
        -StampHeight(record.PageWMSize, 1.0) * GetDeviceCaps(page.get(), LOGPIXELSY) / 72 / 10;
    font_.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    std::wstring_view(L"Arial").copy(font_.lfFaceName, LF_FACESIZE - 1);
    const Rect place = page.place();
    const HFONT font = CreateFontIndirectW(&font_);
    const HGDIOBJ before = SelectObject(page.get(), font);
    SIZE size = {};
    GetTextExtentPointW(page.get(), kText, kTextUnits, &size);
    SelectObject(page.get(), before);
    DeleteObject(font);
    const StampShape shape = ShapeOf(record, angle, {size.cx, size.cy}, place.right);
    const StampPlaces places = PlacesOf(record, angle, shape, {place.right, place.bottom});
    const PagePoint origin = TextOrigin(angle, shape, places.anchor);
    origin_ = {Coordinate(origin.x), Coordinate(origin.y)};
    hasBox_ = shape.frame == StampFrame::kBox;
    if (hasBox_) {
      box_ = BoxAt(angle, shape, places.anchor, place.bottom);
    }
  }

  void Draw() const {
    const HDC context = page_.get();
    const Rect place = page_.place();
    POINT windowOrigin = {};
    POINT viewportOrigin = {};
    SIZE windowExtent = {};
    SIZE viewportExtent = {};
    SetWindowOrgEx(context, 0, 0, &windowOrigin);
    SetViewportOrgEx(context, 0, 0, &viewportOrigin);
    SetWindowExtEx(context, place.right, -place.bottom, &windowExtent);
    SetViewportExtEx(context, place.right, -place.bottom, &viewportExtent);
    const int mode = SetBkMode(context, TRANSPARENT);
    SetROP2(context, 240);
    const UINT align = SetTextAlign(context, 0);
    const HFONT font = MakeFont();
    const HGDIOBJ fontBefore = SelectObject(context, font);
    const COLORREF ground = SetBkColor(context, RGB(255, 255, 255));
    const COLORREF color = SetTextColor(context, 0);
    SIZE size = {};
    GetTextExtentPointW(context, kText, kTextUnits, &size);
    const HBRUSH brush = CreateSolidBrush(0xD2D2D2);
    const HGDIOBJ brushBefore = SelectObject(context, brush);
    ExtEscape(context, kEscapeTile, 0, nullptr, 0, nullptr);
    Fill(WINDING, [&] {
      ExtTextOutW(context, origin_.x, origin_.y, ETO_OPAQUE, nullptr, kText, kTextUnits, nullptr);
    });
    ExtEscape(context, kEscapeTile, 0, nullptr, 0, nullptr);
    if (hasBox_) {
      Fill(ALTERNATE, [&] {
        Outline(box_.outer);
        Outline(box_.inner);
      });
    }
    SetTextAlign(context, align);
    SetWindowExtEx(context, windowExtent.cx, windowExtent.cy, nullptr);
    SetViewportExtEx(context, viewportExtent.cx, viewportExtent.cy, nullptr);
    SetWindowOrgEx(context, windowOrigin.x, windowOrigin.y, nullptr);
    SetViewportOrgEx(context, viewportOrigin.x, viewportOrigin.y, nullptr);
    SetBkMode(context, mode);
    SetBkColor(context, ground);
    SetTextColor(context, color);
    SelectObject(context, fontBefore);
    DeleteObject(font);
    SelectObject(context, brushBefore);
    DeleteObject(brush);
  }

 private:
  HFONT MakeFont() const {
    LOGFONTW font = font_;
    LOGFONTW wanted = {};
    wanted.lfCharSet = DEFAULT_CHARSET;
    std::copy(std::begin(font.lfFaceName), std::end(font.lfFaceName), wanted.lfFaceName);
    BYTE charSet = DEFAULT_CHARSET;
    EnumFontFamiliesExW(page_.get(), &wanted, TakeCharSet, reinterpret_cast<LPARAM>(&charSet), 0);
    font.lfCharSet = charSet;
    POINT point = {0, GetDeviceCaps(page_.get(), LOGPIXELSY)};
    DPtoLP(page_.get(), &point, 1);
    return CreateFontIndirectW(&font);
  }
  void Fill(int mode, const std::function<void()>& draw) const {
    BeginPath(page_.get());
    draw();
    EndPath(page_.get());
    const int before = SetPolyFillMode(page_.get(), mode);
    FillPath(page_.get());
    SetPolyFillMode(page_.get(), before);
  }
  void Outline(const std::array<Point, 4>& corners) const {
    std::array<POINT, 4> points = {};
    std::ranges::transform(corners, points.begin(), [](Point corner) {
      return POINT{corner.x, corner.y};
    });
    Polygon(page_.get(), points.data(), static_cast<int>(points.size()));
  }

  const OpenPage& page_;
  LOGFONTW font_ = {};
  Point origin_ = {};
  bool hasBox_ = false;
  StampBox box_ = {};
};

// Of one stamp, over a round of them.
double MicrosecondsOfStamp(const std::function<void()>& stamp) {
  const double round = Microseconds([&] {
    for (int i = 0; i < kStampsInARound; ++i) {
      stamp();
    }
  });
  return round / kStampsInARound;
}

void MeasureOne(const OpenPage& page, const char* name, const WatermarkData& record) {
  const DirectStamp direct(page, record);
  const Rect place = page.place();
  const auto context = reinterpret_cast<DeviceContext>(page.get());
  std::vector<double> ours;
  std::vector<double> theirs;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(MicrosecondsOfStamp([&] {
      DrawPrintStamp(context, place, record, 0, 1.0, {place.right, place.bottom});
    }));
    theirs.push_back(MicrosecondsOfStamp([&] { direct.Draw(); }));
  }
  std::printf("%-24s %10.0f %18.0f %8.3f\n", name, Median(ours), Median(theirs),
              Median(ours) / Median(theirs));
}

}  // namespace

void MeasureStamps(const std::wstring& printer, const std::wstring& libraryPath) {
  const print_system::DriverWords driver(libraryPath);
  const OpenPage page(printer);
  std::printf("\nstamps on a printer's pages, %d by each way\n", kRounds * kStampsInARound);
  std::printf("%-24s %10s %18s %8s\n", "stamp", "us", "same calls, us", "ratio");
  MeasureOne(page, "text", Record(false));
  MeasureOne(page, "text in a box", Record(true));
}

}  // namespace ostrel::bench
