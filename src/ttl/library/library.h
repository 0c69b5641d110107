// The library of logic devices: its names, its test vectors, and the changes that a person makes to it.
#pragma once

#include "ttl/ttl_variables.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix {

class session;

/// The library of the programmer model in use, chosen anew at each call: "lib\test.lib" of the newer ones,
/// "lib1\test190.lib" of the others, after `syspath` as it is.
std::string library_path(const session& plug_in);

struct library_directory {
    std::int32_t count = 0;          // as the header says, even if the list is shorter
    std::vector<std::string> names;  // in the order of the directory
};

/// Names beyond the end of the line buffer are left out. A missing library gives an empty directory.
library_directory read_directory(session& plug_in);

/// Fetches a device into `ttlpin`, `ttlcnt` and `ttlvect`. False where the library does not have it.
bool fetch_device(const session& plug_in, ttl_variables& ttl, const std::string& name);

/// Whether a record has room for the name. Blanks around it are not stored.
bool name_fits(std::string_view name);

/// Removes a device; asks first if `silent` is 0. Returns true if the person refused. A library with fewer than two
/// devices, or without this name, does not change. If the library has no end line, or an earlier name contains this
/// one, throws std::runtime_error with a text that says which, and the file does not change.
bool ttldelete(session& plug_in, const std::string& name, std::uint8_t silent);

/// Adds or replaces the device of `ttlname`, `ttlpin` and `ttlcnt` with the vectors `rows`. `list` holds the names as
/// the test dialog shows them; a new name goes to its end. A library with fewer than two devices is left as it is.
/// Throws std::runtime_error where the name does not fit or the library is damaged.
void ttlinsert(session& plug_in, ttl_variables& ttl, std::vector<std::string>& list,
               const std::vector<std::string>& rows);

}  // namespace tamrix
