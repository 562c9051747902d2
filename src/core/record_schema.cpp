#include "core/record_schema.h"

#include "core/text.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace ostrel {
namespace {

// ---- The build refuses a bad table --------------------------------------------------------------

constexpr bool IsCustomPaperRow(std::size_t row) {
  return row >= kSchemaRows - kSchemaCustomPaperRows;
}

constexpr bool KeysAreUnique() {
  for (std::size_t i = 0; i < kSchemaRows; ++i) {
    for (std::size_t j = i + 1; j < kSchemaRows; ++j) {
      if (std::string_view(kRecordSchema[i].key) == kRecordSchema[j].key) {
        return false;
      }
    }
  }
  return true;
}

// Rows stand in the order of the record, and no two claim one place.
constexpr bool RowsFollowTheRecord() {
  std::size_t end = 0;
  for (std::size_t i = 0; i < kSchemaRows; ++i) {
    const RecordField& field = kRecordSchema[i].field;
    if (field.kind == FieldKind::kNone) {
      continue;
    }
    const std::size_t base = IsCustomPaperRow(i) ? offsetof(PrivateDevmode, CustomPaperSize) : 0;
    if (base + field.offset < end) {
      return false;
    }
    const bool narrow = field.kind == FieldKind::kWord || field.kind == FieldKind::kText;
    end = base + field.offset + std::size_t{field.count} * (narrow ? 2 : 4);
  }
  return end <= sizeof(PrivateDevmode);
}

constexpr bool DefaultsLieInTheirRanges() {
  for (const SchemaRow& row : kRecordSchema) {
    const bool inside = row.defaultValue >= row.minimum && row.defaultValue <= row.maximum;
    if (row.minimum > row.maximum || (!inside && std::string_view(row.key) != "WMFontChosen")) {
      return false;
    }
  }
  return true;
}

constexpr bool RepairsFitTheirFields() {
  for (const SchemaRow& row : kRecordSchema) {
    const bool textRepair =
        row.repair == Repair::kForceTerminator || row.repair == Repair::kEmptyUnlessTerminated;
    if (textRepair != (row.field.kind == FieldKind::kText) ||
        textRepair != (row.defaultText != nullptr) ||
        (row.field.kind == FieldKind::kNone && row.repair != Repair::kNone)) {
      return false;
    }
    // A cut text has room for its terminator; an emptied one may fill its field but for that.
    if (row.repair == Repair::kForceTerminator && row.maximum != row.field.count - 1) {
      return false;
    }
  }
  return true;
}

static_assert(KeysAreUnique());
static_assert(RowsFollowTheRecord());
static_assert(DefaultsLieInTheirRanges());
static_assert(RepairsFitTheirFields());

// ---- Fields as bytes ----------------------------------------------------------------------------

template <typename T>
T Load(const std::byte* place) {
  T value;
  std::memcpy(&value, place, sizeof(T));
  return value;
}

template <typename T>
void Store(std::byte* place, T value) {
  std::memcpy(place, &value, sizeof(T));
}

template <typename T>
void RepairWords(std::byte* place, std::size_t count, std::int64_t defaultValue,
                 std::int64_t minimum, std::int64_t maximum) {
  for (std::size_t i = 0; i < count; ++i, place += sizeof(T)) {
    const std::int64_t value = Load<T>(place);
    if (value < minimum || value > maximum) {
      Store(place, static_cast<T>(defaultValue));
    }
  }
}

void RepairRange(std::byte* record, const RecordField& field, std::int64_t defaultValue,
                 std::int64_t minimum, std::int64_t maximum) {
  std::byte* place = record + field.offset;
  switch (field.kind) {
    case FieldKind::kWord:
      RepairWords<std::int16_t>(place, field.count, defaultValue, minimum, maximum);
      break;
    case FieldKind::kDword:
      RepairWords<std::int32_t>(place, field.count, defaultValue, minimum, maximum);
      break;
    case FieldKind::kUnsignedDword:
      RepairWords<std::uint32_t>(place, field.count, defaultValue, minimum, maximum);
      break;
    case FieldKind::kText:
    case FieldKind::kNone:
      break;
  }
}

// A range that nothing lies in: every word takes the default.
void WriteDefault(std::byte* record, const RecordField& field, std::int64_t defaultValue) {
  RepairRange(record, field, defaultValue, 1, 0);
}

bool IsTerminated(const std::byte* text, std::size_t units) {
  for (std::size_t i = 0; i < units; ++i) {
    if (Load<char16_t>(text + i * sizeof(char16_t)) == u'\0') {
      return true;
    }
  }
  return false;
}

void EnforceRow(std::byte* record, const SchemaRow& row) {
  std::byte* place = record + row.field.offset;
  const std::size_t textBytes = std::size_t{row.field.count} * sizeof(char16_t);
  switch (row.repair) {
    case Repair::kRange:
      RepairRange(record, row.field, row.defaultValue, row.minimum, row.maximum);
      break;
    case Repair::kEmptyUnlessTerminated:
      if (!IsTerminated(place, row.field.count)) {
        std::memset(place, 0, textBytes);
      }
      break;
    case Repair::kForceTerminator:
      Store(place + textBytes - sizeof(char16_t), u'\0');
      break;
    case Repair::kNone:
      break;
  }
}

// The watermark family repairs by its rows, but starts from the default watermark record.
bool LiesInWatermark(const RecordField& field) {
  return field.offset >= offsetof(PrivateDevmode, WatermarkData) &&
         field.offset < offsetof(PrivateDevmode, WatermarkEditorWord);
}

std::byte* Bytes(PrivateDevmode& record) {
  return reinterpret_cast<std::byte*>(&record);
}
std::byte* Bytes(CustomPaperEntry& entry) {
  return reinterpret_cast<std::byte*>(&entry);
}

std::span<const SchemaRow> RecordRows() {
  return std::span(kRecordSchema).first<kSchemaRows - kSchemaCustomPaperRows>();
}

std::span<const SchemaRow> CustomPaperRows() {
  return std::span(kRecordSchema).last<kSchemaCustomPaperRows>();
}

}  // namespace

const SchemaRow* FindSchemaRow(std::string_view key) {
  const auto row = std::find_if(kRecordSchema.begin(), kRecordSchema.end(),
                                [key](const SchemaRow& candidate) { return candidate.key == key; });
  return row == kRecordSchema.end() ? nullptr : &*row;
}

void WriteSchemaDefaults(PrivateDevmode& record) {
  for (const SchemaRow& row : RecordRows()) {
    if (!LiesInWatermark(row.field)) {
      WriteDefault(Bytes(record), row.field, row.defaultValue);
    }
  }
  for (const UnlistedRow& row : kUnlistedWords) {
    WriteDefault(Bytes(record), row.field, row.defaultValue);
  }
  std::int64_t number = 0;
  for (CustomPaperEntry& entry : record.CustomPaperSize) {
    ++number;
    for (const SchemaRow& row : CustomPaperRows()) {
      WriteDefault(Bytes(entry), row.field, row.defaultValue);
      if (row.defaultText != nullptr) {
        TextBuilder name(entry.Name);
        AddWithNumber(name, row.defaultText, number);
      }
    }
  }
}

void EnforceSchema(PrivateDevmode& record) {
  for (const SchemaRow& row : RecordRows()) {
    EnforceRow(Bytes(record), row);
  }
  for (CustomPaperEntry& entry : record.CustomPaperSize) {
    for (const SchemaRow& row : CustomPaperRows()) {
      EnforceRow(Bytes(entry), row);
    }
  }
  for (const UnlistedRow& row : kUnlistedWords) {
    RepairRange(Bytes(record), row.field, row.defaultValue, row.minimum, row.maximum);
  }
}

}  // namespace ostrel
