// A plug-in with a vector library of its own and a programmer that writes everything down.
#pragma once

#include "support/plug_in_fixture.h"
#include "support/recording_programmer.h"
#include "support/temp_files.h"
#include "ttl/library/library.h"
#include "ttl/run/slow_model.h"
#include "ttl/run/ttlload.h"

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::tests {

using lines = std::vector<std::string>;

/// Four NAND gates in 14 pins, at rest and with all inputs high.
inline const lines nand_rows{"00H00HGH00H00V", "11L11LGL11L11V"};
inline const slow::device_record nand{"7400", nand_rows};
inline const slow::device_record nor{"7402", {"H00H00G00H00HV", "L11L11G11L11LV"}};

struct ttl_fixture : plug_in_fixture {
    ttl_fixture()
    {
        session.hardware.source = recording_programmer(log);
        session.syspath = files.path("");
        variables.ttl.ok = bool16_true;
        session.blocks.modeltype(0) = 50;
        shell.on_box = [this](const forms::message_box& box) { log.add("box " + one_line(box.text)); };
        std::filesystem::create_directory(files.path("lib"));
        std::filesystem::create_directory(files.path("lib1"));
    }

    static std::string one_line(std::string text)
    {
        for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 3) text.replace(at, 1, " | ");
        return text;
    }
    void use_model(std::int16_t modeltype, bool usb)
    {
        session.blocks.modeltype(0) = modeltype;
        session.blocks.usbable(0) = usb ? bool16_true : bool16_false;
    }
    /// Puts rows in work as if the library had been read.
    void put_rows(const lines& rows)
    {
        for (std::size_t i = 0; i < rows.size(); ++i) variables.ttl.ttlvect.store(i, rows[i]);
        variables.ttl.ttlcnt = static_cast<std::int16_t>(rows.size() + 1);
        variables.ttl.ttlpin = static_cast<std::int16_t>(rows[0].size());
    }
    /// Lets the socket show what the letters of these rows say, one after the other.
    void socket_shows(const lines& rows)
    {
        for (const std::string& row : rows) log.socket.push_back(slow::ports_of(row));
    }
    void socket40_shows(const lines& rows)
    {
        for (const std::string& row : rows) log.socket.push_back(slow::ports_of_40(row));
    }

    std::string library_file() const { return files.path("lib/test.lib"); }
    void write_library(std::string_view content) const { files.write("lib/test.lib", content); }
    void write_library(const std::vector<slow::device_record>& records) const
    {
        write_library(slow::library_text(records));
    }
    std::string library() const { return read_text(library_file()); }
    /// Adds a device as the editor's Done button does; `list` is what the test dialog shows.
    void insert(const slow::device_record& device, lines& list)
    {
        variables.ttl.ttlname = device.name;
        variables.ttl.ttlpin = static_cast<std::int16_t>(device.pins());
        variables.ttl.ttlcnt = static_cast<std::int16_t>(device.rows.size() + 1);
        ttlinsert(session, variables.ttl, list, device.rows);
    }
    std::string row(std::size_t i) { return std::string{variables.ttl.ttlvect(i)}; }
    std::string status() { return session.blocks.MainRtstr(0); }

    recording log;
    temp_folder files;
};

}  // namespace tamrix::tests
