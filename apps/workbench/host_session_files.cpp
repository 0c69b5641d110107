// The session's loads and saves.
#include "host/fuse_file.h"
#include "workbench/host_session.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

namespace tamrix::workbench {

/// The diagnostic is that of the last load or save; one that was cancelled has none of its own.
outcome host_session::transfer(const std::function<reply(Clstamrix&)>& method)
{
    outcome told = run(method);
    if (!told.cancelled()) told.diagnostic = library_.diagnostic(plug_in_.get());
    return told;
}

outcome host_session::load(std::string file, std::int16_t format)
{
    return transfer([&](Clstamrix& plug_in) { return plug_in.readfile0(file, format, work_folder_); });
}

outcome host_session::save(std::string file)
{
    return transfer([&](Clstamrix& plug_in) { return plug_in.wfile(file, work_folder_); });
}

std::span<std::uint8_t> host_session::device_memory()
{
    const std::span<std::uint8_t> whole = buffer();
    const auto wanted = static_cast<std::size_t>(host::image_bytes(device_));
    return wanted == 0 ? whole : whole.first(std::min(whole.size(), wanted));
}

host::clear_choice host_session::load_from(const memory_image& image, std::uint64_t start)
{
    const auto clear = static_cast<host::clear_choice>(blocks_->value<std::uint8_t>("typeformat", 1));
    if (clear == host::clear_choice::fill_ff) std::ranges::fill(buffer(), std::uint8_t{0xFF});
    if (clear == host::clear_choice::fill_00) std::ranges::fill(buffer(), std::uint8_t{0x00});
    host::place(image, start, device_memory());
    return clear;
}

/// There is nothing to cancel in a routine, so the diagnostic is always its own.
outcome host_session::routine(const std::function<reply(Clstamrix&)>& method)
{
    outcome told = run(method);
    told.diagnostic = library_.diagnostic(plug_in_.get());
    return told;
}

outcome host_session::load_jedec(std::string file)
{
    outcome told = routine([&](Clstamrix& plug_in) { return plug_in.readpldfile(file); });
    told.note = library_.jedec_note(plug_in_.get());
    return told;
}

outcome host_session::save_jedec_as_plug_in(std::string file)
{
    return routine([&](Clstamrix& plug_in) { return plug_in.writepldfile(file); });
}

/// Only the plug-in has the vectors, and only its own form of the file gives them.
outcome host_session::save_jedec(const std::string& file)
{
    outcome told;
    try {
        std::vector<std::uint8_t> fuses = host::fuses_in(buffer(), device_);
        const std::string own_form = work_folder_ + "saved.jed";
        auto& row_fuses = blocks_->value<std::int16_t>("pagelength");
        const std::int16_t row_fuses_of_device = std::exchange(row_fuses, std::int16_t{32});  // 0 ends that save
        told = save_jedec_as_plug_in(own_form);
        row_fuses = row_fuses_of_device;
        if (!told.failed()) host::save_standard_fuse_file(file, std::move(fuses), device_, own_form);
        std::error_code ignored;
        std::filesystem::remove(own_form, ignored);
    } catch (const std::runtime_error& error) {
        told.diagnostic = error.what();
    }
    return told;
}

outcome host_session::import_svf(std::string file)
{
    outcome told = routine([&](Clstamrix& plug_in) { return plug_in.readsvffile(file, work_folder_); });
    const variant empty_file{std::int16_t{1}};
    if (told.result.value == empty_file) told.diagnostic = file + ": an empty file";
    return told;
}

}  // namespace tamrix::workbench
