// The fields of a settings record by name, for those who show or set them from outside: public
// words as the platform names them, private ones by the names of their members, those of the
// watermark in force by theirs. Reserved areas and the custom papers' array have no names here.
#pragma once

#include "core/record_schema.h"
#include "core/settings_record.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ostrel {

struct NamedField {
  std::string_view name;
  RecordField field;  // the offset counts from the start of the whole record
};

// All of them, in the order in which they stand in the record.
std::span<const NamedField> NamedFields();

// Null when no field bears the name.
const NamedField* FindField(std::string_view name);

// The number in a field, the first one where several stand there; 0 for a text.
std::int64_t FieldNumber(const DriverDevmode& record, const NamedField& field);
// Writes a number, cut to the field's width; into a text nothing.
void SetFieldNumber(DriverDevmode& record, const NamedField& field, std::int64_t number);

// The text in a field, up to its terminator; empty for a number.
std::u16string FieldTextOf(const DriverDevmode& record, const NamedField& field);
// Writes a text, cut to fit, and fills the rest of the field with NUL; into a number nothing.
void SetFieldText(DriverDevmode& record, const NamedField& field, std::u16string_view text);

// Whether a field is the same in both records, with all the words that stand there.
bool FieldsEqual(const DriverDevmode& left, const DriverDevmode& right, const NamedField& field);

// A field's content to be shown: numbers with blanks between them, or the text itself, in UTF-8.
std::string FieldShown(const DriverDevmode& record, const NamedField& field);

}  // namespace ostrel
