// The values of a device as a person types them: what each field takes, and which one is wrong.
#pragma once

#include "host/device_preset.h"

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>

namespace tamrix::workbench {

struct device_field {
    const char* key;  // as in a file of devices; "name" is the device's own
    const char* label;
    const char* unit;
    const char* help;
};

/// The fields of a group, in their order.
enum class field_group { device, memory, note, pins, programming };
std::span<const device_field> fields_of(field_group group);

using field_texts = std::map<std::string, std::string>;  // by key

/// What the fields show of a device. The buffer is empty if it is as large as the device needs.
field_texts texts_of(const host::device_preset& device);

struct wrong_field {
    std::string key;
    std::string expected;  // "a number from 1 to 255"
};

/// The first field that is wrong, from the first group on; none if all are right. `is_taken` says whether another
/// device has a name.
std::optional<wrong_field> find_wrong_field(const field_texts& texts,
                                            const std::function<bool(const std::string& name)>& is_taken);
/// The device of texts that are right. Throws std::runtime_error if they are not.
host::device_preset device_of(const field_texts& texts, host::clear_choice clear);

}  // namespace tamrix::workbench
