// What the stamps on a thousand pages cost, natively, over the drawing recorder. The peer makes the
// same calls of the platform, the questions and the objects included, from a list of numbers that
// was written down before: what is more than that is our own work. The geometry alone has no peer.
#include "job/stamp_stage.h"
#include "job/watermark_geometry.h"

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ostrel {
namespace {

using headless::DrawingCall;
using headless::DrawingOperation;
using test::StampScene;

constexpr int kPages = 1000;

// ---- The same calls without our logic -----------------------------------------------------------

int TakeCharSet(const LogFont* font, const void* /*metrics*/, std::uint32_t /*fontType*/,
                std::intptr_t callersWord) {
  *reinterpret_cast<std::uint8_t*>(callersWord) = font->lfCharSet;
  return 0;
}

class Replay {
 public:
  Replay(StampScene& scene, std::vector<DrawingOperation> operations)
      : hdc_(scene.hdc), operations_(std::move(operations)) {}

  void Page() {
    for (const DrawingOperation& operation : operations_) {
      Do(operation);
    }
  }

 private:
  void Select(const DrawingOperation& operation) {
    Graphics& graphics = World().graphics;
    if (operation.numbers[0] == headless::kSelectedFont) {
      SelectFont(operation.state.font);
    } else if (isEnding_) {
      graphics.SelectObject(hdc_, brushBefore_);
      graphics.DeleteObject(brush_);
      isEnding_ = false;
    } else {
      const GdiObject made =
          graphics.CreateSolidBrush(static_cast<std::uint32_t>(operation.numbers[1]));
      const GdiObject before = graphics.SelectObject(hdc_, made);
      if (before == brush_) {
        graphics.DeleteObject(before);
      } else {
        brushBefore_ = before;
      }
      brush_ = made;
    }
  }
  void SelectFont(const LogFont& font) {
    Graphics& graphics = World().graphics;
    if (font.lfOutPrecision != kOutTrueTypeOnly) {
      graphics.SelectObject(hdc_, fontBefore_);
      graphics.DeleteObject(font_);
      isEnding_ = true;
      return;
    }
    std::uint8_t charSet = 0;
    Point point = {0, graphics.GetDeviceCaps(hdc_, kDeviceCapLogPixelsY)};
    Size size = {};
    graphics.EnumFontFamiliesExW(hdc_, font, TakeCharSet,
                                 reinterpret_cast<std::intptr_t>(&charSet));
    graphics.DPtoLP(hdc_, &point, 1);
    font_ = graphics.CreateFontIndirectW(font);
    fontBefore_ = graphics.SelectObject(hdc_, font_);
    graphics.GetTextExtentPointW(hdc_, u"Draft", 5, &size);
  }
  void Do(const DrawingOperation& operation) {
    Graphics& graphics = World().graphics;
    const auto number = [&operation](std::size_t i) {
      return static_cast<std::int32_t>(operation.numbers[i]);
    };
    const auto word = [&operation](std::size_t i) {
      return static_cast<std::uint32_t>(operation.numbers[i]);
    };
    Point origin = {};
    Size extent = {};
    switch (operation.call) {
      case DrawingCall::kSelectObject:
        Select(operation);
        break;
      case DrawingCall::kSetWindowOrgEx:
        graphics.SetWindowOrgEx(hdc_, number(0), number(1), &origin);
        break;
      case DrawingCall::kSetViewportOrgEx:
        graphics.SetViewportOrgEx(hdc_, number(0), number(1), &origin);
        break;
      case DrawingCall::kSetWindowExtEx:
        graphics.SetWindowExtEx(hdc_, number(0), number(1), &extent);
        break;
      case DrawingCall::kSetViewportExtEx:
        graphics.SetViewportExtEx(hdc_, number(0), number(1), &extent);
        break;
      case DrawingCall::kSetBkMode:
        graphics.SetBkMode(hdc_, number(0));
        break;
      case DrawingCall::kSetROP2:
        graphics.SetROP2(hdc_, number(0));
        break;
      case DrawingCall::kSetPolyFillMode:
        graphics.SetPolyFillMode(hdc_, number(0));
        break;
      case DrawingCall::kSetTextAlign:
        graphics.SetTextAlign(hdc_, word(0));
        break;
      case DrawingCall::kSetTextColor:
        graphics.SetTextColor(hdc_, word(0));
        break;
      case DrawingCall::kSetBkColor:
        graphics.SetBkColor(hdc_, word(0));
        break;
      case DrawingCall::kBeginPath:
        graphics.BeginPath(hdc_);
        break;
      case DrawingCall::kEndPath:
        graphics.EndPath(hdc_);
        break;
      case DrawingCall::kFillPath:
        graphics.FillPath(hdc_);
        break;
      case DrawingCall::kExtTextOutW:
        graphics.ExtTextOutW(hdc_, number(0), number(1), word(2), nullptr, operation.text.data(),
                             static_cast<int>(operation.text.size()));
        break;
      case DrawingCall::kEllipse:
        graphics.Ellipse(hdc_, {number(0), number(1), number(2), number(3)});
        break;
      case DrawingCall::kPolygon:
        graphics.Polygon(hdc_, operation.points.data(), static_cast<int>(operation.points.size()));
        break;
      case DrawingCall::kExtEscape:
        graphics.ExtEscape(hdc_, number(0), static_cast<std::int32_t>(operation.bytes.size()),
                           operation.bytes.data(), number(1), nullptr);
        break;
      default:
        break;
    }
  }

  DeviceContext hdc_;
  std::vector<DrawingOperation> operations_;
  GdiObject font_ = nullptr;
  GdiObject fontBefore_ = nullptr;
  GdiObject brush_ = nullptr;
  GdiObject brushBefore_ = nullptr;
  bool isEnding_ = false;
};

// ---- A thousand pages ---------------------------------------------------------------------------

void PrepareText(StampScene& scene) {
  scene.record.PageWMAngle = 45;
  scene.record.PageWMTransparent = 1;
}

void PrepareBox(StampScene& scene) {
  PrepareText(scene);
  scene.record.PageWMBorder = 2;
}

void PrepareTiles(StampScene& scene) {
  PrepareBox(scene);
  scene.record.PageWMRepeat = 1;
}

void ReplayPages(benchmark::State& state, void (*prepare)(StampScene& scene)) {
  StampScene scene;
  prepare(scene);
  const std::string lines = scene.Lines();
  Replay replay(scene, scene.device.operations);
  scene.device.operations.clear();
  replay.Page();
  std::string replayed;
  for (const DrawingOperation& operation : scene.device.operations) {
    replayed += headless::Describe(operation) + '\n';
  }
  if (replayed != lines) {
    state.SkipWithError("the peer draws something else");
    return;
  }
  for (auto _ : state) {
    for (int page = 0; page < kPages; ++page) {
      scene.device.operations.clear();
      replay.Page();
    }
  }
}

void StampPages(benchmark::State& state, void (*prepare)(StampScene& scene), const char* peer) {
  StampScene scene;
  prepare(scene);
  for (auto _ : state) {
    for (int page = 0; page < kPages; ++page) {
      scene.device.operations.clear();
      scene.Stamp();
    }
  }
  state.SetLabel(peer);
}

void ThousandTextsDrawnDirectlyPeer(benchmark::State& state) {
  ReplayPages(state, PrepareText);
}
BENCHMARK(ThousandTextsDrawnDirectlyPeer);

void ThousandTextStamps(benchmark::State& state) {
  StampPages(state, PrepareText, "ThousandTextsDrawnDirectlyPeer");
}
BENCHMARK(ThousandTextStamps);

void ThousandBoxesDrawnDirectlyPeer(benchmark::State& state) {
  ReplayPages(state, PrepareBox);
}
BENCHMARK(ThousandBoxesDrawnDirectlyPeer);

void ThousandBoxStamps(benchmark::State& state) {
  StampPages(state, PrepareBox, "ThousandBoxesDrawnDirectlyPeer");
}
BENCHMARK(ThousandBoxStamps);

void ThousandTiledPagesDrawnDirectlyPeer(benchmark::State& state) {
  ReplayPages(state, PrepareTiles);
}
BENCHMARK(ThousandTiledPagesDrawnDirectlyPeer);

void ThousandTiledStamps(benchmark::State& state) {
  StampPages(state, PrepareTiles, "ThousandTiledPagesDrawnDirectlyPeer");
}
BENCHMARK(ThousandTiledStamps);

// ---- The geometry alone -------------------------------------------------------------------------

void GeometryOfABoxStamp(benchmark::State& state) {
  StampScene scene;
  PrepareBox(scene);
  scene.record.PageWMItalic = 1;
  const StampExtent page = {4960, 7015};
  for (auto _ : state) {
    benchmark::DoNotOptimize(scene.record);
    const StampAngle angle = AngleOf(scene.record.PageWMAngle);
    const StampShape shape = ShapeOf(scene.record, angle, {1365, 546}, page.width);
    const StampPlaces places = PlacesOf(scene.record, angle, shape, page);
    benchmark::DoNotOptimize(TextOrigin(angle, shape, places.anchor));
    benchmark::DoNotOptimize(BoxAt(angle, shape, places.anchor, 7015));
  }
}
BENCHMARK(GeometryOfABoxStamp);

}  // namespace
}  // namespace ostrel
