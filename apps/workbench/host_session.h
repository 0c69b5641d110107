// The host's side of the plug-in, without a window: the shared blocks, the device in use, the calls and their results.
#pragma once

#include "host/device_fit.h"
#include "host/device_preset.h"
#include "host/host_blocks.h"
#include "workbench/logic_verdict.h"
#include "workbench/plug_in_library.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix::workbench {

/// The results of a call.
struct outcome {
    reply result{};
    std::string lines{};       // what it put into MainRtstr(0)
    std::string diagnostic{};  // why a load or save failed
    std::string note{};        // the text above the fuses of a fuse file
    bool failed() const { return !result.ok() || !diagnostic.empty(); }
    /// A dialog that was closed without doing its work leaves no lines.
    bool cancelled() const { return result.ok() && lines.empty(); }
};

/// The programmer, as the blocks and the plug-in describe it.
struct programmer_choice {
    std::string library{};  // empty: the one that the environment names, if any
    std::string options{};
    std::int16_t model = 40;  // modeltype(0)
    bool usb = true;          // usbable(0): its route
};

class host_session {
public:
    /// Loads the plug-in and attaches it to blocks of its own. Throws std::runtime_error.
    explicit host_session(const std::string& plug_in_path);
    ~host_session();
    host_session(const host_session&) = delete;
    host_session& operator=(const host_session&) = delete;

    const plug_in_library& library() const { return library_; }
    const host::device_preset& device() const { return device_; }
    /// Sets the blocks for `device` and makes its buffer, which is blank. Throws std::runtime_error; the device and the
    /// bytes are those before then, but the bytes may be elsewhere.
    void select(const host::device_preset& device);

    /// The bytes of the buffer, without its margin.
    std::span<std::uint8_t> buffer();
    /// False from release_buffer() until the buffer is attached again: no method of the plug-in can use it meanwhile.
    bool buffer_is_attached() const { return attached_; }

    /// Makes the plug-in use this programmer from now on and release the previous one. Throws std::runtime_error.
    void use_programmer(programmer_choice choice);
    /// Stores `options` for the next programmer; the one in use has already been changed directly.
    void remember_options(std::string options) { programmer_.options = std::move(options); }
    const programmer_choice& programmer() const { return programmer_; }

    /// Sets the language of the texts: an offset for which the plug-in has texts.
    void use_language(std::int32_t offset);
    std::int32_t language() const { return language_; }

    bool offers(const char* method) const { return library_.offers(plug_in_.get(), method) != 0; }
    /// The progress of a long method, in percent.
    int progress() const { return std::as_const(*blocks_).value<std::uint8_t>("prgmode", 1); }
    /// Calls an entry method and collects its results.
    outcome run(const std::function<reply(Clstamrix&)>& method);
    outcome load(std::string file, std::int16_t format);
    outcome save(std::string file);
    /// The part of the buffer that the device in use has memory for.
    std::span<std::uint8_t> device_memory();
    /// Puts the bytes of `image` from file address `start` on into the device's memory, which is cleared first, as the
    /// load dialog was asked to do. Returns how it was cleared.
    host::clear_choice load_from(const memory_image& image, std::uint64_t start);
    /// The files of logic devices; their routines have no dialog and leave no lines.
    outcome load_jedec(std::string file);
    /// In the form of the standard. The fuses are those in the buffer, the vectors those of the plug-in.
    outcome save_jedec(const std::string& file);
    /// In the plug-in's own form.
    outcome save_jedec_as_plug_in(std::string file);
    /// Copies an SVF file to the work folder.
    outcome import_svf(std::string file);
    /// Shows the note of the device in use, if it has one.
    outcome show_note();
    /// How many vectors the device has for vector_test.
    int vector_count() const { return library_.vector_count(plug_in_.get()); }
    /// The device with which the next logic test begins; empty: none.
    void propose_logic_device(const std::string& name) { library_.propose_logic_device(plug_in_.get(), name.c_str()); }
    /// The logic tests of the last call that can run some, in order.
    std::vector<logic_test> logic_tests() const;
    /// How the last self-test of the last call ended, and the plug-in's report of it.
    std::pair<tamrix_selftest_result, std::string> last_selftest() const;
    /// Lets the person record signals, into a buffer that holds every bank of a programmer. The bytes of the device
    /// come back after it; what buffer() returned before is gone, as after select(). Throws std::runtime_error.
    outcome analyze();
    /// Plays the vectors of the device, 100 at most, with its own supply.
    outcome vector_test(bool hardware);

    /// The three methods that attach and release, for a person to call one by one. Attaching creates the blocks and the
    /// buffer anew; the content of the buffer stays. Throw std::runtime_error if a block cannot be created.
    outcome attach_small();
    outcome attach_buffer();
    outcome release_buffer();

    /// A folder for the plug-in's large temporary files, with "/" at its end; it goes with the session.
    const std::string& work_folder() const { return work_folder_; }

private:
    struct destroyer {
        decltype(&tamrix_destroy) destroy;
        void operator()(Clstamrix* plug_in) const { destroy(plug_in); }
    };
    void require(const outcome& told) const;
    std::vector<std::uint8_t> bytes_to_keep();
    outcome enter(const host::device_preset& device, const std::vector<std::uint8_t>& content);
    outcome renew_buffer(const std::vector<std::uint8_t>& content);
    void keep_names_private();
    void tell_programmer();
    outcome transfer(const std::function<reply(Clstamrix&)>& method);
    outcome routine(const std::function<reply(Clstamrix&)>& method);

    std::string name_space_;
    bool private_names_;
    plug_in_library library_;
    std::string work_folder_;
    std::unique_ptr<host::host_blocks> blocks_;
    std::unique_ptr<Clstamrix, destroyer> plug_in_;
    host::device_preset device_{};
    programmer_choice programmer_{};
    std::int32_t language_ = 0;
    bool attached_ = false;
};

}  // namespace tamrix::workbench
