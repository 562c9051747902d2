// What the core's own code costs, natively: record validation, merge, key look-up, context creation
// and every capability code. The ratios that matter are against the peers in the same run: a plain
// copy of the record's bytes, a std::unordered_map look-up, and the platform calls alone.
#include "core/device_capabilities.h"
#include "core/devmode_lifecycle.h"
#include "core/parameter_table.h"
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

void CopyRecordPeer(benchmark::State& state) {
  const Scene scene;
  DriverDevmode copy;
  for (auto _ : state) {
    std::memcpy(&copy, &scene.record, sizeof(copy));
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(CopyRecordPeer);

void ValidateGoodRecord(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) {
    benchmark::DoNotOptimize(ValidatePrivateDevmode(&scene.record.privateDevmode));
  }
}
BENCHMARK(ValidateGoodRecord);

void ValidateRecordWithEveryValueWrong(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) {
    std::memset(&scene.record.privateDevmode, 0xA5, sizeof(scene.record.privateDevmode));
    benchmark::DoNotOptimize(ValidatePrivateDevmode(&scene.record.privateDevmode));
  }
}
BENCHMARK(ValidateRecordWithEveryValueWrong);

void MergeOwnRecord(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) {
    benchmark::DoNotOptimize(MergeDevmode(&scene.record, &scene.incoming.publicDevmode));
  }
}
BENCHMARK(MergeOwnRecord);

void MergeForeignRecord(benchmark::State& state) {
  Scene scene;
  scene.incoming.publicDevmode.dmDriverVersion = 1;
  for (auto _ : state) {
    benchmark::DoNotOptimize(MergeDevmode(&scene.record, &scene.incoming.publicDevmode));
  }
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
}
BENCHMARK(LookUpFirstKey);

void LookUpLastKey(benchmark::State& state) {
  const Scene scene;
  std::int16_t value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(GetUIParam(scene.context, "Negative", &value, sizeof(value)));
  }
}
BENCHMARK(LookUpLastKey);

void LookUpUnknownKey(benchmark::State& state) {
  const Scene scene;
  std::int16_t value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(GetUIParam(scene.context, "NoSuchKey", &value, sizeof(value)));
  }
}
BENCHMARK(LookUpUnknownKey);

void CreateContext(benchmark::State& state) {
  const Scene scene;
  for (auto _ : state) {
    UIContext* context = CreateUIContext(scene.printer, &scene.incoming.publicDevmode);
    benchmark::DoNotOptimize(context);
    FreeUIContext(context);
  }
}
BENCHMARK(CreateContext);

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
}
BENCHMARK(Capability)->DenseRange(kDcFields, kDcCollate)->DenseRange(kDcMediaReady, kDcColorDevice);

}  // namespace
}  // namespace ostrel
