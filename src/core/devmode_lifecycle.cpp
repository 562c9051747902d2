#include "core/devmode_lifecycle.h"

#include "core/paper_tables.h"

#include <algorithm>
#include <cstring>

namespace ostrel {
namespace {

constexpr std::uint16_t kSize_3_51 = 192;  // DEVMODEW of the first system with Unicode records
constexpr std::uint16_t kSize_4_00 = 216;
constexpr std::uint16_t kSize_4_01 = 224;

std::byte* BytesOf(PublicDevmode* record) {
  return reinterpret_cast<std::byte*>(record);
}
const std::byte* BytesOf(const PublicDevmode* record) {
  return reinterpret_cast<const std::byte*>(record);
}

bool Has(const PublicDevmode& record, std::uint32_t flags) {
  return (record.dmFields & flags) != 0;
}

bool IsMergeable(const PublicDevmode& record) {
  return record.dmDeviceName[0] != u'\0' && record.dmSize == kPublicDevmodeBytes &&
         record.dmFields != 0;
}

// The private word Duplex of a record that is long enough to hold it, of whatever driver.
void TakePrivateDuplex(DriverDevmode& target, const PublicDevmode& incoming) {
  constexpr std::size_t kPlace = offsetof(PrivateDevmode, Duplex);
  std::int16_t& word = target.privateDevmode.Duplex;
  if (incoming.dmDriverExtra >= kPlace + sizeof(word)) {
    std::memcpy(&word, BytesOf(&incoming) + incoming.dmSize + kPlace, sizeof(word));
  }
}

void MergeDuplex(DriverDevmode& target, const PublicDevmode& incoming) {
  const std::int16_t duplex = incoming.dmDuplex;
  if (duplex < kDuplexSimplex || duplex > kDuplexPrivateMax) {
    return;
  }
  target.publicDevmode.dmDuplex = duplex;
  if (duplex > kDuplexPublicMax) {
    TakePrivateDuplex(target, incoming);
  }
}

void MergePaper(DriverDevmode& target, const PublicDevmode& incoming) {
  PublicDevmode& record = target.publicDevmode;
  const auto id = static_cast<std::uint16_t>(incoming.dmPaperSize);
  if (!IsCustomPaperId(id) && FindPaperRow(id) == nullptr) {
    // Only an unknown id falls to the locale's paper, and the form name is left alone.
    const LocalePaper& paper = PaperOfLocale();
    record.dmPaperSize = paper.id;
    record.dmPaperWidth = paper.width_tenths_mm;
    record.dmPaperLength = paper.length_tenths_mm;
    return;
  }
  // The private part serves the look-up as yes or no, so the target's is as good as the incoming's.
  PaperExtent extent = {};
  GetPaperExtent(&target.privateDevmode, id, incoming.dmOrientation, &extent);
  record.dmPaperSize = incoming.dmPaperSize;
  record.dmPaperWidth = static_cast<std::int16_t>(TenthsOfMillimetre(extent.width_px600));
  record.dmPaperLength = static_cast<std::int16_t>(TenthsOfMillimetre(extent.length_px600));
}

std::int16_t ResolutionOr600(std::int16_t resolution) {
  return resolution == kResolution1200 ? resolution : kResolution600;
}

void MergePublicFields(DriverDevmode& target, const PublicDevmode& incoming) {
  PublicDevmode& record = target.publicDevmode;
  const auto both = [&](std::uint32_t flags) { return Has(record, flags) && Has(incoming, flags); };
  const auto within = [](std::int16_t value, std::int16_t minimum, std::int16_t maximum) {
    return value >= minimum && value <= maximum;
  };

  if (both(kDmOrientation) && within(incoming.dmOrientation, 1, 2)) {
    record.dmOrientation = incoming.dmOrientation;
  }
  if (both(kDmCopies) && within(incoming.dmCopies, 1, kMaxCopies)) {
    record.dmCopies = incoming.dmCopies;
  }
  if (both(kDmPrintQuality)) {
    record.dmPrintQuality = ResolutionOr600(incoming.dmPrintQuality);
  }
  if (both(kDmYResolution)) {
    record.dmYResolution = ResolutionOr600(incoming.dmYResolution);
  }
  if (both(kDmDuplex)) {
    MergeDuplex(target, incoming);
  }
  if (both(kDmMediaType) && incoming.dmMediaType != 0) {
    record.dmMediaType = incoming.dmMediaType;
  }
  // Any of the three announces a paper, and the two records may name different ones of them.
  if (both(kDmPaperSize | kDmPaperLength | kDmPaperWidth)) {
    MergePaper(target, incoming);
  }
  if (both(kDmDefaultSource) && incoming.dmDefaultSource >= 1) {
    record.dmDefaultSource = incoming.dmDefaultSource;
  }
  if (both(kDmScale)) {
    record.dmScale = incoming.dmScale;
  }
  if (both(kDmCollate) && within(incoming.dmCollate, 0, 1)) {
    record.dmCollate = incoming.dmCollate;
  }
  if (both(kDmColor)) {
    record.dmColor = kColorMonochrome;  // whatever is asked for: the device is monochrome
  }
}

bool IsOwnRecord(const PublicDevmode& record) {
  if (record.dmDriverVersion != kDevmodeDriverVersion ||
      record.dmSpecVersion != kDevmodeSpecVersion || record.dmDriverExtra != kPrivateDevmodeBytes) {
    return false;
  }
  PrivateDevmode::SignatureBytes signature;
  std::memcpy(&signature, BytesOf(&record) + record.dmSize, sizeof(signature));
  return signature == kPrivateSignature;
}

}  // namespace

DevmodeHeader ReadHeader(const PublicDevmode* record) {
  DevmodeHeader header;
  std::memcpy(&header, BytesOf(record) + offsetof(PublicDevmode, dmSpecVersion), sizeof(header));
  return header;
}

void WriteHeader(PublicDevmode* record, const DevmodeHeader& header) {
  std::memcpy(BytesOf(record) + offsetof(PublicDevmode, dmSpecVersion), &header, sizeof(header));
}

DevmodeHeader SettledHeader(const PublicDevmode* out, const PublicDevmode* in) {
  const DevmodeHeader header = ReadHeader(out);
  return header.driverVersion == 0 ? ReadHeader(in) : header;
}

std::uint16_t QueryDevmodeVersion(const PublicDevmode* record) {
  if (record == nullptr) {
    return 0;
  }
  const DevmodeHeader header = ReadHeader(record);
  switch (header.size) {
    case kSize_3_51:
      return 800;
    case kSize_4_00:
      return 1024;
    case kSize_4_01:
      return 1025;
    default:
      return header.specVersion;
  }
}

bool MergeDevmode(DriverDevmode* target, const PublicDevmode* incoming) {
  if (incoming == nullptr) {
    return true;
  }
  if (target == nullptr || !IsMergeable(*incoming) ||
      QueryDevmodeVersion(&target->publicDevmode) == 0 || QueryDevmodeVersion(incoming) == 0) {
    return false;
  }
  DevmodeHeader header = ReadHeader(&target->publicDevmode);
  if (header.driverVersion == 0) {
    header.specVersion = incoming->dmSpecVersion;
    header.driverVersion = incoming->dmDriverVersion;
    header.size = kPublicDevmodeBytes;
  }
  MergePublicFields(*target, *incoming);
  if (IsOwnRecord(*incoming) && target->publicDevmode.dmDriverExtra == kPrivateDevmodeBytes) {
    std::memcpy(&target->privateDevmode, BytesOf(incoming) + incoming->dmSize,
                kPrivateDevmodeBytes);
    ValidatePrivateDevmode(&target->privateDevmode);
  }
  WriteHeader(&target->publicDevmode, header);
  return true;
}

std::uint32_t ConvertDevmode(PublicDevmode* out, const PublicDevmode* in) {
  if (QueryDevmodeVersion(out) == 0 || QueryDevmodeVersion(in) == 0) {
    return 0;
  }
  const DevmodeHeader source = ReadHeader(in);
  const DevmodeHeader header = SettledHeader(out, in);
  if (source.size < kDevmodeHeaderBytes || header.size < kDevmodeHeaderBytes) {
    return 0;
  }
  std::uint32_t copied = std::min(source.size, header.size);
  std::memmove(out, in, copied);
  WriteHeader(out, header);

  std::byte* privatePart = BytesOf(out) + header.size;
  if (header.driverExtra == source.driverExtra) {
    std::memmove(privatePart, BytesOf(in) + source.size, header.driverExtra);
    copied += header.driverExtra;
  } else {
    std::memset(privatePart, 0, header.driverExtra);
  }
  return copied;
}

bool ConvertDevmodeTo(const DevmodeHeader& header, PublicDevmode* out, const PublicDevmode* in) {
  const DevmodeHeader before = ReadHeader(out);
  WriteHeader(out, header);
  if (ConvertDevmode(out, in) == 0) {
    WriteHeader(out, before);
    return false;
  }
  return true;
}

bool CopyDevmodeOut(const DriverDevmode* current, const PublicDevmode* reference,
                    PublicDevmode* out) {
  if (out == nullptr) {
    return false;
  }
  const DevmodeHeader own = ReadHeader(&current->publicDevmode);
  // A working record may have come from a file, words and all.
  if (own.TotalBytes() > sizeof(DriverDevmode)) {
    return false;
  }
  if (reference == nullptr) {
    std::memcpy(out, current, own.TotalBytes());
    return true;
  }
  // Callers pass one record as reference and output, so it is read before it is written.
  const DevmodeHeader other = ReadHeader(reference);
  DevmodeHeader header = own;
  if (other.size < own.size) {
    header.specVersion = other.specVersion;
    header.size = other.size;
  }
  if (other.driverExtra < own.driverExtra) {
    header.driverVersion = other.driverVersion;
    header.driverExtra = other.driverExtra;
  }
  return ConvertDevmodeTo(header, out, &current->publicDevmode);
}

}  // namespace ostrel
