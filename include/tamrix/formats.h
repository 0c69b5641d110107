// The file formats for a host: names and extensions for its file dialogs, and detection by content.
#pragma once

#include "tamrix/clstamrix.h"

extern "C" {

/// Formats 0 to 7 can be loaded; formats 0 to 3 can also be saved.
struct tamrix_format {
    const char* name;        // short, for a command line, such as "intel"
    const char* caption;     // English, such as "Intel"
    const char* extensions;  // lower case, separated by blanks, such as "hex ihx"
    int loads, saves;        // 1 if this version can
};

/// Describes the format with option index `index`; returns 0 if there is none.
TAMRIX_EXPORT int tamrix_describe_format(int index, tamrix_format* description) noexcept;

/// How sure a detection is, from no to yes. A binary file is always a "maybe".
enum tamrix_certainty { TAMRIX_NO, TAMRIX_MAYBE, TAMRIX_DAMAGED, TAMRIX_SURE };

/// Detects the format of the file `path` (UTF-8) by its content. Returns the option index for readfile0, or -1 if the
/// file cannot be read. `certainty` may be null.
TAMRIX_EXPORT int tamrix_detect_format(const char* path, tamrix_certainty* certainty) noexcept;

/// Files of logic devices. They have no option index; readpldfile and readsvffile read them.
enum tamrix_pld_format { TAMRIX_NO_PLD, TAMRIX_JEDEC, TAMRIX_SVF };

/// Detects by its content whether the file `path` (UTF-8) belongs to a logic device; TAMRIX_NO_PLD also if it cannot be
/// read. Call this first: tamrix_detect_format takes such a file for a binary one.
TAMRIX_EXPORT tamrix_pld_format tamrix_detect_pld(const char* path) noexcept;
}
