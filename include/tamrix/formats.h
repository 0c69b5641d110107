// The file formats as a host needs them: names of the buffer formats for its file dialogs, and detection by content.
#pragma once

#include "tamrix/clstamrix.h"

extern "C" {

/// Formats that can be loaded have an option index from 0 to 7; those that can be saved, 0 to 3.
struct tamrix_format {
    const char* name;        // short, for a command line, such as "intel"
    const char* caption;     // English, such as "Intel"
    const char* extensions;  // lower case, with blanks between, such as "hex ihx"
    int loads, saves;        // 1 where this version does it
};

/// Describes the format with option index `index`; yields 0 for an index without one.
TAMRIX_EXPORT int tamrix_describe_format(int index, tamrix_format* description) noexcept;

/// How sure a detection is, from no to yes. A binary file is always a "maybe".
enum tamrix_certainty { TAMRIX_NO, TAMRIX_MAYBE, TAMRIX_DAMAGED, TAMRIX_SURE };

/// Detects the format of the file `path` (UTF-8) by its content. Yields the option index to hand to readfile0, or -1
/// where the file cannot be read. `certainty` may be null.
TAMRIX_EXPORT int tamrix_detect_format(const char* path, tamrix_certainty* certainty) noexcept;

/// Files of logic devices: they have no option index, but a method of their own, readpldfile or readsvffile.
enum tamrix_pld_format { TAMRIX_NO_PLD, TAMRIX_JEDEC, TAMRIX_SVF };

/// Tells by its content whether the file `path` (UTF-8) is one of a logic device; TAMRIX_NO_PLD too where it cannot be
/// read. A host asks this first: as a buffer format such a file would pass for a binary one.
TAMRIX_EXPORT tamrix_pld_format tamrix_detect_pld(const char* path) noexcept;
}
