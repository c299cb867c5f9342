// Records by their rows: values by field name into bytes and back, for what is not bound to a row at
// compile time.
#pragma once

#include "frame/describe.h"
#include "simulator/layouts.h"

#include <span>
#include <vector>

namespace norvane::simulator {

/// The record of a notification with the values of its fields. Numbers go into number fields; a text
/// into a text field; a record's content as `layouts::fill` reads it. Throws device_error that names the
/// field on a value that does not fit; a field without a value is zero.
std::vector<char> encode(const frame::record_description& event, const node& values, const layouts& layouts);

/// The values of a record's fields by name, records by their layouts. What is secret shows as "***", a secret field of
/// a layout too.
json decode(const frame::record_description& described, std::span<const char> record, const layouts& layouts);

}  // namespace norvane::simulator
