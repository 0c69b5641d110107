// The plug-in's class, and the functions with which a host creates it and asks about it.
#pragma once

#include "tamrix/types.h"

#include <cstdint>
#include <string>

#if defined(_WIN32)
#define TAMRIX_EXPORT __declspec(dllexport)
#else
#define TAMRIX_EXPORT __attribute__((visibility("default")))
#endif

namespace tamrix {

/// The 18 entry methods, in their fixed order. Parameters are references; only warn changes one, its note number. Texts
/// and paths are UTF-8; "\" and "/" both separate folders. Call the methods from one thread, the host's user-interface
/// thread, one at a time. No method throws.
///
/// Order: create the shared blocks, call bufcomopt(num), set buflength(0), call buffercomopt(num), then any other
/// method. To change buflength(0), call freesharebufferopt() before and buffercomopt(num) after.
class Clstamrix {
public:
    virtual ~Clstamrix() = default;

    /// Shows the load dialog for file `fname` with format option `rformat` (0 to 7) preselected. Returns the From File
    /// Mode index (0 to 6) of the last load; empty until a load has run.
    virtual reply readfile0(std::string& fname, std::int16_t& rformat, std::string& syspath0) = 0;
    /// Shows the save dialog for file `fname`.
    virtual reply wfile(std::string& fname, std::string& syspath0) = 0;
    virtual reply algoparameter0() = 0;
    virtual reply analyzer0() = 0;
    virtual reply recetwave0(bool16& fwave) = 0;
    virtual reply mnutesttestksm() = 0;
    virtual reply mnutestttltest0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0) = 0;
    virtual reply mnuEditeditvector0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0) = 0;
    virtual reply mnutesteditttllib0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0) = 0;
    virtual reply mnutestautofind0(std::string& syspath0) = 0;
    /// Shows note `no` of the selected device, if there is one, and clears bit 7 of `no`.
    virtual reply warn(std::uint8_t& no, bool16& extpower0) = 0;
    virtual reply vecttest0(std::uint8_t& mode, std::uint8_t& ttlcnt0, std::uint8_t& wnote0, bool16& ok0) = 0;
    virtual reply readpldfile(std::string& fname) = 0;
    virtual reply writepldfile(std::string& fname) = 0;
    virtual reply readsvffile(std::string& fname, std::string& syspath0) = 0;
    /// Attaches the 60 small blocks of instance `num` (usually 0 to 100) and selects the help file of the language.
    virtual reply bufcomopt(std::int16_t& num) = 0;
    /// Attaches the data buffer, whose size depends on buflength(0). `num` is not used.
    virtual reply buffercomopt(std::int16_t& num) = 0;
    /// Releases the data buffer.
    virtual reply freesharebufferopt() = 0;
};

}  // namespace tamrix

extern "C" {

/// Creates the plug-in; null on failure. A host needs one. If the environment variable TAMRIX_NAMESPACE is set, the
/// names of all shared blocks begin with it, so hosts with different values share nothing.
TAMRIX_EXPORT tamrix::Clstamrix* tamrix_create() noexcept;
/// Destroys the plug-in and detaches all blocks. Null is allowed.
TAMRIX_EXPORT void tamrix_destroy(tamrix::Clstamrix* plug_in) noexcept;

/// Selects the programmer: `library_path` names a library with the interface of hardware.h, which receives `options`
/// unchanged; both are UTF-8. The previous programmer is released at once. The library is loaded when a method first
/// needs it; if that fails, or there is no programmer, the method's reply says why. Without a call, or with an empty or
/// null path, the environment variable TAMRIX_PROGRAMMER names the library; if it is not set, there is no programmer.
/// bufcomopt creates the programmer anew. Returns 1, or 0 if memory is short.
TAMRIX_EXPORT int tamrix_use_programmer(tamrix::Clstamrix* plug_in, const char* library_path,
                                        const char* options) noexcept;

/// Why the last load or save failed: "FILE:LINE: FOUND where EXPECTED was expected"; "" if it succeeded.
/// UTF-8; valid until the next call into the plug-in.
TAMRIX_EXPORT const char* tamrix_diagnostic(tamrix::Clstamrix* plug_in) noexcept;
/// The lines above the fuses of the file that readpldfile read last, unchanged up to the first NUL, each after a line
/// feed and two blanks; "" if there are none. Valid until the next call into the plug-in.
TAMRIX_EXPORT const char* tamrix_jedec_note(tamrix::Clstamrix* plug_in) noexcept;
/// The help file of the language that was set when bufcomopt ran: "PATH::TOPIC", UTF-8; valid until the next call into
/// the plug-in.
TAMRIX_EXPORT const char* tamrix_help_file(tamrix::Clstamrix* plug_in) noexcept;
/// How many test vectors the device has: those of the fuse file that readpldfile read last, with the changes of the
/// vector editor.
TAMRIX_EXPORT int tamrix_vector_count(tamrix::Clstamrix* plug_in) noexcept;
/// How the self-test ended that the last call of mnutesttestksm ran; if its dialog ran several, the last one. A
/// calibration is none. A run that the person stopped has failed. What could not be carried out (no answer, a reply
/// that did not come, no test board) says nothing about the programmer.
enum tamrix_selftest_result {
    TAMRIX_SELFTEST_NONE,
    TAMRIX_SELFTEST_PASSED,
    TAMRIX_SELFTEST_FAILED,
    TAMRIX_SELFTEST_NOT_CARRIED_OUT
};
TAMRIX_EXPORT tamrix_selftest_result tamrix_last_selftest(tamrix::Clstamrix* plug_in) noexcept;
/// What that self-test found: the verdict, such as "failed, 2 faults", then the faults in the order in which they were
/// found, each after a line feed: "pin 7 (port 4 bit 2): VCC driver: expected high, read low". English and UTF-8 in
/// every language; "" with TAMRIX_SELFTEST_NONE. Valid until the next call into the plug-in.
TAMRIX_EXPORT const char* tamrix_selftest_report(tamrix::Clstamrix* plug_in) noexcept;
/// How a logic test ended: the vectors of a device of the library, or those of the host's device, on the chip in the
/// socket. What could not be carried out (no answer, a reply that did not come) says nothing about the chip.
enum tamrix_logic_result {
    TAMRIX_LOGIC_PASSED,  // also if the person ignored every row that failed
    TAMRIX_LOGIC_FAILED,
    TAMRIX_LOGIC_NOTHING_PLAYED,  // there were no vectors
    TAMRIX_LOGIC_NOT_CARRIED_OUT
};
struct tamrix_logic_test {
    tamrix_logic_result result;
    const char* device;  // its name in the library, UTF-8; "" for the host's device. Valid until the next call
    int pins;            // of the device
    int rows_failed, rows_ignored;  // rows that failed; how many of them the person ignored
    std::uint64_t failed_pins;      // at which a row failed; bit 0 is pin 1
};
/// Describes logic test `index`, from 0, of those that the last call of mnutestttltest0, mnutesteditttllib0,
/// mnuEditeditvector0 or vecttest0 ran, in order. Returns 0 if there is none with that index.
TAMRIX_EXPORT int tamrix_describe_logic_test(tamrix::Clstamrix* plug_in, int index,
                                             tamrix_logic_test* description) noexcept;
/// The device with which the logic test begins, such as the one in the socket; UTF-8. A name that the library does not
/// list, and "" or null, propose none, as without a call.
TAMRIX_EXPORT void tamrix_propose_logic_device(tamrix::Clstamrix* plug_in, const char* name) noexcept;
/// 1 if this version has texts for an offset in Language(0), else 0.
TAMRIX_EXPORT int tamrix_has_language(std::int32_t offset) noexcept;
/// 1 if the entry method named `method` has a dialog or routine in this version and on the programmer model in use,
/// else 0, so that a host can disable its menu entry. Needs an attached plug-in.
TAMRIX_EXPORT int tamrix_offers(tamrix::Clstamrix* plug_in, const char* method) noexcept;
}
