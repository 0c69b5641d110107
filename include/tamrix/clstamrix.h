// The plug-in's class and the functions by which a host that loads the shared library creates and watches it.
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

/// The 18 entry methods, in their fixed order. All parameters are passed by reference and left as they are, but for
/// the note number of warn. Texts and paths are UTF-8; "\" and "/" both separate folders. All calls come from one
/// thread, the host's user-interface thread, one at a time.
///
/// Order: the host creates the shared blocks, calls bufcomopt(num), sets buflength(0), calls buffercomopt(num), then
/// any other method; freesharebufferopt() before buflength(0) changes, and buffercomopt(num) again after it.
/// No method throws.
class Clstamrix {
public:
    virtual ~Clstamrix() = default;

    /// Shows the load dialog for file `fname` with format option `rformat` (0 to 7) preselected. Yields the From File
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
    /// Shows the note `no` of the selected device, if it has one; clears bit 7 of the number.
    virtual reply warn(std::uint8_t& no, bool16& extpower0) = 0;
    virtual reply vecttest0(std::uint8_t& mode, std::uint8_t& ttlcnt0, std::uint8_t& wnote0, bool16& ok0) = 0;
    virtual reply readpldfile(std::string& fname) = 0;
    virtual reply writepldfile(std::string& fname) = 0;
    virtual reply readsvffile(std::string& fname, std::string& syspath0) = 0;
    /// Attaches the 60 small blocks of instance `num` (0 to 100 by custom) and sets the help file by language.
    virtual reply bufcomopt(std::int16_t& num) = 0;
    /// Attaches the data buffer with the size that follows from buflength(0). `num` is not used.
    virtual reply buffercomopt(std::int16_t& num) = 0;
    /// Releases the data buffer.
    virtual reply freesharebufferopt() = 0;
};

}  // namespace tamrix

extern "C" {

/// Creates the plug-in, or yields null where it cannot be made. A host needs one. The environment variable
/// TAMRIX_NAMESPACE, if set, is put before the names of all shared blocks, so that hosts with different values do not
/// meet.
TAMRIX_EXPORT tamrix::Clstamrix* tamrix_create() noexcept;
/// Destroys what tamrix_create made; detaches all blocks. Null is allowed.
TAMRIX_EXPORT void tamrix_destroy(tamrix::Clstamrix* plug_in) noexcept;

/// Tells which programmer the plug-in works with: `library_path` names a library with the interface of hardware.h, to
/// which `options` goes as it is; both are UTF-8. The programmer in use so far is let go at once; the library is loaded
/// when a method first needs it, and where that fails, or there is no programmer, the method's reply says why. An empty
/// or null path stands for the one in the environment variable TAMRIX_PROGRAMMER, as without a call; where that is not
/// set either, no programmer is attached. bufcomopt makes the programmer anew. Yields 1, or 0 where memory is short.
TAMRIX_EXPORT int tamrix_use_programmer(tamrix::Clstamrix* plug_in, const char* library_path,
                                        const char* options) noexcept;

/// Why the last load or save failed: "FILE:LINE: FOUND where EXPECTED was expected", or "" after one that succeeded.
/// UTF-8; valid until the next call into the plug-in.
TAMRIX_EXPORT const char* tamrix_diagnostic(tamrix::Clstamrix* plug_in) noexcept;
/// What stands above the fuses of the file that readpldfile read last: each line as it stands in the file, up to the
/// first NUL, with a line feed and two blanks ahead; "" where there is none. Valid until the next call into the
/// plug-in.
TAMRIX_EXPORT const char* tamrix_jedec_note(tamrix::Clstamrix* plug_in) noexcept;
/// The help file for the language that bufcomopt found: "PATH::TOPIC", UTF-8; valid until the next call into the
/// plug-in.
TAMRIX_EXPORT const char* tamrix_help_file(tamrix::Clstamrix* plug_in) noexcept;
/// How many test vectors the device has: those of the fuse file that readpldfile read last, or as the vector editor
/// left them.
TAMRIX_EXPORT int tamrix_vector_count(tamrix::Clstamrix* plug_in) noexcept;
/// 1 where this version has texts for an offset in Language(0), else 0.
TAMRIX_EXPORT int tamrix_has_language(std::int32_t offset) noexcept;
/// 1 where the entry method called `method` leads to a dialog or routine in this version and on the programmer model in
/// use, else 0: a host greys its menu entry. Needs an attached plug-in.
TAMRIX_EXPORT int tamrix_offers(tamrix::Clstamrix* plug_in, const char* method) noexcept;
}
