// Any bytes as the caller's record and as the spooler's stored one through the document properties
// without a dialog: the caller gets a record in range, in memory of 7896 bytes.
#include "caller_record.h"
#include "core/devmode_lifecycle.h"
#include "core/devmode_queries.h"
#include "core/ui_context.h"
#include "support/test_world.h"

#include <cstring>
#include <memory>

namespace {

using namespace ostrel;
using fuzz::Require;

// What a caller may rely on. A record with a smaller shape of its own gets as much as it holds; one
// that can't be converted leaves the output as it was, which is zero here.
void CheckRecord(const DriverDevmode& out, const PublicDevmode* reference) {
  const DevmodeHeader header = ReadHeader(&out.publicDevmode);
  Require(header.TotalBytes() <= sizeof(out), "the output tells no more than it holds");
  Require(reference != nullptr || header.size == kPublicDevmodeBytes, "the record is handed out");
  if (header.size == kPublicDevmodeBytes) {
    Require(out.publicDevmode.dmCopies >= 1 && out.publicDevmode.dmCopies <= kMaxCopies,
            "copies are in range");
    Require(out.publicDevmode.dmPrintQuality == 600 || out.publicDevmode.dmPrintQuality == 1200,
            "the resolution is one of the two");
  }
  if (header.size == kPublicDevmodeBytes && header.driverExtra == kPrivateDevmodeBytes) {
    const PrivateDevmode& record = out.privateDevmode;
    Require(record.Signature == kPrivateSignature, "the private part is ours");
    Require(record.CustomPaperSize[0].Width == 0, "custom papers are cleared");
    Require(record.FavoriteName[0] != 0, "a favourite is named");
    PrivateDevmode repaired = record;
    ValidatePrivateDevmode(&repaired);
    Require(std::memcmp(&repaired, &record, offsetof(PrivateDevmode, Duplex)) == 0 &&
                std::memcmp(&repaired.DuplexIndex, &record.DuplexIndex,
                            offsetof(PrivateDevmode, CustomPaperSize) -
                                offsetof(PrivateDevmode, DuplexIndex)) == 0,
            "private values are in range");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static test::TestWorld world;
  static const PrinterHandle printer = world.OpenPrinter();

  fuzz::Input input(data, size);
  const std::uint8_t choice = fuzz::TakeByte(input);
  world.printer->devmode.clear();
  if ((choice & 1) != 0) {
    fuzz::CallerRecord stored(input);
    const auto* bytes = reinterpret_cast<const std::byte*>(stored.get());
    world.printer->devmode.assign(bytes, bytes + stored.size());
  }
  fuzz::CallerRecord incoming(input);
  const auto out = std::make_unique<DriverDevmode>();

  DocumentPropertyHeader header = {};
  header.cbSize = sizeof(header);
  header.hPrinter = printer;
  header.pdmIn = (choice & 2) != 0 ? nullptr : incoming.get();
  header.pdmOut = &out->publicDevmode;
  header.fMode = choice >> 4;
  const std::int32_t result = DocumentPropertiesWithoutDialog(&header);
  Require(result == (header.fMode == 0 ? kDriverDevmodeBytes : 1), "the sheet answers");
  Require(header.cbOut == kDriverDevmodeBytes, "the size is told");

  if ((header.fMode & (kDmUpdate | kDmCopy)) != 0) {
    CheckRecord(*out, header.pdmIn);
  }
  return 0;
}
