// Any bytes as the caller's record and as the spooler's stored one through the document properties
// without a dialog: the caller gets a record in range, in memory of 7896 bytes.
#include "caller_record.h"
#include "core/devmode_queries.h"
#include "core/ui_context.h"
#include "support/test_world.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ostrel;
  using fuzz::Require;

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

  const PublicDevmode& record = out->publicDevmode;
  if (header.pdmIn == nullptr && (header.fMode & (kDmUpdate | kDmCopy)) != 0) {
    Require(record.dmSize == kPublicDevmodeBytes && record.dmDriverExtra == kPrivateDevmodeBytes,
            "the whole record is handed out");
    Require(record.dmCopies >= 1 && record.dmCopies <= 999, "copies are in range");
    Require(out->privateDevmode.Signature == kPrivateSignature, "the private part is ours");
    Require(out->privateDevmode.CustomPaperSize[0].Width == 0, "custom papers are cleared");
  }
  return 0;
}
