#include "ttl/library/library.h"

#include "channel/model.h"
#include "session/session.h"
#include "ttl/library/library_file.h"

#include <optional>

namespace tamrix {

std::string library_path(const session& plug_in)
{
    const bool newer = hw::model_of(plug_in.blocks.modeltype(0)).newer_library;
    return plug_in.syspath + (newer ? "lib\\test.lib" : "lib1\\test190.lib");
}

library_directory read_directory(session& plug_in)
{
    const std::string content = library_content(library_path(plug_in));
    library_lines lines{content};
    library_directory directory;
    const auto found = find_header(lines);
    if (!found) return directory;
    const std::string header = in_line_buffer(*found);
    directory.count = device_count(header);
    std::size_t column = directory_column;
    for (std::int32_t i = 0; i < directory.count; ++i) {
        const auto entry = directory_entry_at(header, column);
        if (!entry) break;
        directory.names.emplace_back(entry->name);
        column = entry->next_column;
    }
    return directory;
}

namespace {

std::optional<library_record> find_record(const std::string& path, const std::string& name)
{
    const std::string content = library_content(path);
    library_lines lines{content};
    const std::string wanted = "$" + name + " ";
    while (const auto line = lines.next()) {
        if (contains(in_line_buffer(*line), wanted)) return library_record{*line};
        if (is_end_line(*line)) break;
    }
    return std::nullopt;
}

}  // namespace

bool fetch_device(const session& plug_in, ttl_variables& ttl, const std::string& name)
{
    const auto record = find_record(library_path(plug_in), name);
    if (!record) return false;
    ttl.ttlcnt = record->n();
    ttl.ttlpin = record->pins();
    for (int i = 0; i <= ttl.ttlcnt - 2; ++i) ttl.ttlvect.store(static_cast<std::size_t>(i), record->row(i));
    return true;
}

}  // namespace tamrix
