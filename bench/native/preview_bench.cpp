// What a repaint of the layout page's picture costs, natively, over the in-memory drawing: plain,
// and with thickness, rotation and scale. The peer is the same picture copied to the control by the
// plain road without any work on its pixels: loaded for each paint, as ours is, and once more
// without the loading on either side. For the pixel work alone it is a copy of the same bytes.
#include "core/parameter_table.h"
#include "core/settings_record.h"
#include "pages/preview.h"
#include "pages/preview_pixels.h"
#include "support/bitmap_rows.h"
#include "support/test_world.h"

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace ostrel {
namespace {

constexpr std::uint32_t kFourPages = 835;

// A control as large as its picture, and a record that has four pages on a sheet.
struct Scene {
  Scene() {
    InitDriverDevmode(&context.devmode, test::kPrinterName, nullptr);
    context.publicPointer = &context.devmode.publicDevmode;
    context.privatePointer = &context.devmode.privateDevmode;
    BuildUIParamTable(&context);
    context.bitmapModule = world.platform.modules.LoadLibraryW(test::kBitmapLibraryPath);
    context.privatePointer->MultipleUp = 4;
    context.privatePointer->PageOrder = 2;
    Graphics& graphics = World().graphics;
    const GdiObject picture = graphics.LoadBitmapW(context.bitmapModule, kFourPages);
    graphics.GetBitmapSize(picture, &size);
    graphics.DeleteObject(picture);
    item.hDC = graphics.CreateCompatibleDC(nullptr);
    item.rcItem = {0, 0, size.width, size.height};
    // Compatible with the screen: a new context in memory has two colours.
    const DeviceContext screen = graphics.GetDC(nullptr);
    control = graphics.CreateCompatibleBitmap(screen, size.width, size.height);
    graphics.ReleaseDC(nullptr, screen);
    before = graphics.SelectObject(item.hDC, control);
  }
  ~Scene() {
    Graphics& graphics = World().graphics;
    graphics.SelectObject(item.hDC, before);
    graphics.DeleteObject(control);
    graphics.DeleteDC(item.hDC);
  }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // The picture's rows, as the platform gives them.
  std::vector<std::uint8_t> Rows() const {
    Graphics& graphics = World().graphics;
    std::vector<std::uint8_t> rows(RowStride(size.width) * static_cast<std::size_t>(size.height));
    BitmapInfoHeader form = test::Form(size.width, size.height);
    const GdiObject picture = graphics.LoadBitmapW(context.bitmapModule, kFourPages);
    graphics.GetDIBits(item.hDC, picture, 0, static_cast<std::uint32_t>(size.height), rows.data(),
                       &form);
    graphics.DeleteObject(picture);
    return rows;
  }

  test::TestWorld world;
  UIContext context = {};
  Size size = {};
  DrawItem item = {};
  GdiObject control = nullptr;
  GdiObject before = nullptr;
};

constexpr char kPlainCopy[] = "PlainCopyOfThePicturePeer";
constexpr char kLoadedCopy[] = "CopyOfALoadedPicturePeer";
constexpr char kRowsCopy[] = "CopyOfThePicturesRowsPeer";

// ---- The whole repaint --------------------------------------------------------------------------

// Copies a bitmap to the control as it is. Result: false when the platform doesn't paint.
bool CopyPicture(const Scene& scene, GdiObject picture) {
  Graphics& graphics = World().graphics;
  const DeviceContext holder = graphics.CreateCompatibleDC(scene.item.hDC);
  const GdiObject before = graphics.SelectObject(holder, picture);
  const bool copied = graphics.BitBlt(scene.item.hDC, scene.item.rcItem, holder, {0, 0});
  graphics.SelectObject(holder, before);
  graphics.DeleteDC(holder);
  return copied;
}

void PlainCopyOfThePicturePeer(benchmark::State& state) {
  const Scene scene;
  Graphics& graphics = World().graphics;
  for (auto _ : state) {
    const GdiObject picture = graphics.LoadBitmapW(scene.context.bitmapModule, kFourPages);
    if (!CopyPicture(scene, picture)) {
      state.SkipWithError("the platform doesn't paint");
      return;
    }
    graphics.DeleteObject(picture);
  }
}
BENCHMARK(PlainCopyOfThePicturePeer);

struct Look {
  std::int16_t thickness = kLevelNormal;
  bool turned = false;
  std::int32_t scale = 100;
};

void Repaint(benchmark::State& state, const Look& look) {
  Scene scene;
  PrivateDevmode& own = *scene.context.privatePointer;
  own.Thickness = look.thickness;
  own.Rotate180 = look.turned ? 1 : 0;
  own.ScaleRadio = look.scale;
  for (auto _ : state) {
    DrawLayoutPicture(scene.context, scene.item);
  }
  state.SetLabel(kPlainCopy);
}

void RepaintAsItIs(benchmark::State& state) {
  Repaint(state, {});
}
BENCHMARK(RepaintAsItIs);

void RepaintThickness(benchmark::State& state) {
  Repaint(state, {.thickness = kLevelVeryDark, .turned = false, .scale = 100});
}
BENCHMARK(RepaintThickness);

void RepaintTurned(benchmark::State& state) {
  Repaint(state, {.thickness = kLevelNormal, .turned = true, .scale = 100});
}
BENCHMARK(RepaintTurned);

void RepaintScaled(benchmark::State& state) {
  Repaint(state, {.thickness = kLevelNormal, .turned = false, .scale = 75});
}
BENCHMARK(RepaintScaled);

void RepaintThicknessTurnedScaled(benchmark::State& state) {
  Repaint(state, {.thickness = kLevelVeryDark, .turned = true, .scale = 75});
}
BENCHMARK(RepaintThicknessTurnedScaled);

// ---- The drawing of a loaded picture ------------------------------------------------------------

void CopyOfALoadedPicturePeer(benchmark::State& state) {
  const Scene scene;
  Graphics& graphics = World().graphics;
  const GdiObject picture = graphics.LoadBitmapW(scene.context.bitmapModule, kFourPages);
  for (auto _ : state) {
    CopyPicture(scene, picture);
  }
  graphics.DeleteObject(picture);
}
BENCHMARK(CopyOfALoadedPicturePeer);

void DrawingOfALoadedPicture(benchmark::State& state) {
  const Scene scene;
  Graphics& graphics = World().graphics;
  const GdiObject picture = graphics.LoadBitmapW(scene.context.bitmapModule, kFourPages);
  for (auto _ : state) {
    DrawLayoutPreview(scene.item.hDC, picture, scene.item.rcItem,
                      {.level = kLevelVeryDark, .rotate = true, .scale = 75, .booklet = false});
  }
  graphics.DeleteObject(picture);
  state.SetLabel(kLoadedCopy);
}
BENCHMARK(DrawingOfALoadedPicture);

// ---- The pixel work alone -----------------------------------------------------------------------

void CopyOfThePicturesRowsPeer(benchmark::State& state) {
  const Scene scene;
  const std::vector<std::uint8_t> rows = scene.Rows();
  std::vector<std::uint8_t> copy(rows.size());
  for (auto _ : state) {
    std::memcpy(copy.data(), rows.data(), rows.size());
    benchmark::DoNotOptimize(copy.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(CopyOfThePicturesRowsPeer);

// The copy that brings the rows back each time is counted in.
template <typename Work>
void WorkOnRows(benchmark::State& state, Work work) {
  const Scene scene;
  const std::vector<std::uint8_t> rows = scene.Rows();
  std::vector<std::uint8_t> copy(rows.size());
  for (auto _ : state) {
    std::memcpy(copy.data(), rows.data(), rows.size());
    work(PixelRows{copy.data(), scene.size.width, scene.size.height});
    benchmark::DoNotOptimize(copy.data());
    benchmark::ClobberMemory();
  }
  state.SetLabel(kRowsCopy);
}

void LevelOfThePicture(benchmark::State& state) {
  WorkOnRows(state, [](const PixelRows& rows) { ShowLevel(rows, kLevelVeryDark); });
}
BENCHMARK(LevelOfThePicture);

void MirroredPicture(benchmark::State& state) {
  WorkOnRows(state, MirrorRows);
}
BENCHMARK(MirroredPicture);

void TurnedPicture(benchmark::State& state) {
  WorkOnRows(state, TurnRows);
}
BENCHMARK(TurnedPicture);

void WhiteEdgesOfThePicture(benchmark::State& state) {
  WorkOnRows(state, WhitenEdges);
}
BENCHMARK(WhiteEdgesOfThePicture);

}  // namespace
}  // namespace ostrel
