// What the core's own code costs, natively: record validation, merge, key look-up, context creation
// and every capability code. Each measurement names its peer, measured in the same run: the same
// bytes copied, a hash map's look-up, the same calls of the platform without our logic.
// tools/bench-ratios.py turns the two into a ratio.
#include "core/device_capabilities.h"
#include "core/devmode_lifecycle.h"
#include "core/paper_tables.h"
#include "core/parameter_table.h"
#include "core/process_state.h"
#include "core/ui_context.h"
#include "support/test_world.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>

namespace ostrel {
namespace {

struct Scene {
  Scene() : printer(world.OpenPrinter()) {
    InitDriverDevmode(&record, test::kDriverName, test::kDriverName);
    InitDriverDevmode(&incoming, test::kDriverName, test::kDriverName);
    context = CreateUIContext(printer, nullptr);
  }
  ~Scene() { FreeUIContext(context); }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  test::TestWorld world;
  PrinterHandle printer;
  DriverDevmode record = {};
  DriverDevmode incoming = {};
  UIContext* context;
};

constexpr char kCopyRecord[] = "CopyRecordPeer";
constexpr char kCopyPublicPart[] = "CopyPublicPartPeer";
constexpr char kHashMapLookup[] = "HashMapLookupPeer";
constexpr char kPlatformCalls[] = "PlatformCallsOfAContextPeer";
constexpr char kEmptyCall[] = "EmptyCallPeer";
constexpr char kLoadNames[] = "LoadPaperNamesPeer";

void CopyRecordPeer(benchmark::State& state) {
  const Scene scene;
  DriverDevmode copy;
  for (auto _ : state) {
    std::memcpy(&copy, &scene.record, sizeof(copy));
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(CopyRecordPeer);

void CopyPublicPartPeer(benchmark::State& state) {
  const Scene scene;
  PublicDevmode copy;
  for (auto _ : state) {
    std::memcpy(&copy, &scene.record.publicDevmode, sizeof(copy));
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(CopyPublicPartPeer);

void ValidateGoodRecord(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) {
    benchmark::DoNotOptimize(ValidatePrivateDevmode(&scene.record.privateDevmode));
  }
  state.SetLabel(kCopyRecord);
}
BENCHMARK(ValidateGoodRecord);

void ValidateRecordWithEveryValueWrong(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) {
    std::memset(&scene.record.privateDevmode, 0xA5, sizeof(scene.record.privateDevmode));
    benchmark::DoNotOptimize(ValidatePrivateDevmode(&scene.record.privateDevmode));
  }
  state.SetLabel(kCopyRecord);
}
BENCHMARK(ValidateRecordWithEveryValueWrong);

void MergeOwnRecord(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) {
    benchmark::DoNotOptimize(MergeDevmode(&scene.record, &scene.incoming.publicDevmode));
  }
  state.SetLabel(kCopyRecord);
}
BENCHMARK(MergeOwnRecord);

void MergeForeignRecord(benchmark::State& state) {
  Scene scene;
  scene.incoming.publicDevmode.dmDriverVersion = 1;
  for (auto _ : state) {
    benchmark::DoNotOptimize(MergeDevmode(&scene.record, &scene.incoming.publicDevmode));
  }
  state.SetLabel(kCopyPublicPart);
}
BENCHMARK(MergeForeignRecord);

void HashMapLookupPeer(benchmark::State& state) {
  const Scene scene;
  std::unordered_map<std::string, const UIParamSlot*> slots;
  for (const UIParamSlot& slot : scene.context->uiParams) {
    slots.emplace(slot.Key, &slot);
  }
  std::int16_t value = 0;
  for (auto _ : state) {
    const UIParamSlot* slot = slots.find("Negative")->second;
    std::memcpy(&value,
                reinterpret_cast<const std::byte*>(scene.context->privatePointer) + slot->Offset,
                sizeof(value));
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(HashMapLookupPeer);

void LookUpFirstKey(benchmark::State& state) {
  const Scene scene;
  std::int32_t value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(GetUIParam(scene.context, "OutputSize", &value, sizeof(value)));
  }
  state.SetLabel(kHashMapLookup);
}
BENCHMARK(LookUpFirstKey);

void LookUpLastKey(benchmark::State& state) {
  const Scene scene;
  std::int16_t value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(GetUIParam(scene.context, "Negative", &value, sizeof(value)));
  }
  state.SetLabel(kHashMapLookup);
}
BENCHMARK(LookUpLastKey);

void LookUpUnknownKey(benchmark::State& state) {
  const Scene scene;
  std::int16_t value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(GetUIParam(scene.context, "NoSuchKey", &value, sizeof(value)));
  }
  state.SetLabel(kHashMapLookup);
}
BENCHMARK(LookUpUnknownKey);

// What a context asks of the platform, without what it does with the answers.
void PlatformCallsOfAContextPeer(benchmark::State& state) {
  const Scene scene;
  Platform& world = World();
  char16_t path[kMaxPathUnits];
  char16_t text[256];
  for (auto _ : state) {
    void* context = world.memory.HeapAlloc(sizeof(UIContext));
    std::uint32_t needed = 0;
    world.print.GetPrinterW(scene.printer, 2, nullptr, 0, &needed);
    void* info = world.memory.HeapAlloc(needed);
    world.print.GetPrinterW(scene.printer, 2, info, needed, &needed);
    world.locale.GetLocaleInfoW(kLocaleUserDefault, kLocaleICountry, text, 16);
    for (int library = 0; library < 2; ++library) {
      world.modules.GetModuleFileNameW(scene.world.process.LibraryModule, path, kMaxPathUnits);
      const ModuleHandle module = world.modules.LoadLibraryW(test::kEnglishLibraryPath);
      world.modules.LoadStringW(module, 202, text, 256);
      world.modules.FreeLibrary(module);
    }
    world.modules.LoadLibraryW(test::kBitmapLibraryPath);
    world.memory.HeapFree(info);
    world.memory.HeapFree(context);
  }
}
BENCHMARK(PlatformCallsOfAContextPeer);

void CreateContext(benchmark::State& state) {
  const Scene scene;
  for (auto _ : state) {
    UIContext* context = CreateUIContext(scene.printer, &scene.incoming.publicDevmode);
    benchmark::DoNotOptimize(context);
    FreeUIContext(context);
  }
  state.SetLabel(kPlatformCalls);
}
BENCHMARK(CreateContext);

using CapabilityFunction = std::uint32_t (*)(PrinterHandle, const char16_t*, std::uint16_t, void*,
                                             const PublicDevmode*);

void EmptyCallPeer(benchmark::State& state) {
  CapabilityFunction function = [](PrinterHandle, const char16_t*, std::uint16_t code, void*,
                                   const PublicDevmode*) { return std::uint32_t{code}; };
  benchmark::DoNotOptimize(function);
  for (auto _ : state) {
    benchmark::DoNotOptimize(function(nullptr, nullptr, 1, nullptr, nullptr));
  }
}
BENCHMARK(EmptyCallPeer);

void LoadPaperNamesPeer(benchmark::State& state) {
  const test::TestWorld world;
  std::array<char16_t, kPaperRows * kPaperNameUnits> output;
  for (auto _ : state) {
    const ModuleHandle module = World().modules.LoadLibraryW(test::kEnglishLibraryPath);
    char16_t* row = output.data();
    for (const PaperRow& paper : kPaperTable) {
      World().modules.LoadStringW(module, paper.nameStringId, row, kPaperNameUnits);
      row += kPaperNameUnits;
    }
    World().modules.FreeLibrary(module);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(LoadPaperNamesPeer);

bool IsNameList(std::uint16_t code) {
  return code == kDcBinNames || code == kDcPaperNames || code == kDcMediaReady;
}

void Capability(benchmark::State& state) {
  const Scene scene;
  // Rows for the longest list: 48 names of 64 units.
  std::array<char16_t, 48 * kPaperNameUnits> output;
  const auto code = static_cast<std::uint16_t>(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        DrvDeviceCapabilities(scene.printer, test::kDriverName, code, output.data(), nullptr));
    benchmark::ClobberMemory();
  }
  state.SetLabel(IsNameList(code) ? kLoadNames : kEmptyCall);
}
BENCHMARK(Capability)->DenseRange(kDcFields, kDcCollate)->DenseRange(kDcMediaReady, kDcColorDevice);

}  // namespace
}  // namespace ostrel
