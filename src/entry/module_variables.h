// What outlives a dialog, a struct a subject. Each dialog and routine is handed those that it uses.
#pragma once

#include "formats/transfer_variables.h"
#include "instruments/analyzer/analyzer_settings.h"
#include "instruments/wave/wave_variables.h"
#include "pld/pld_variables.h"
#include "selftest/selftest_variables.h"
#include "ttl/ttl_variables.h"

namespace tamrix {

struct module_variables {
    transfer_variables transfer;
    pld_variables pld;
    ttl_variables ttl;
    selftest_variables selftest;
    analyzer_settings analyzer;
    wave_variables wave;
};

}  // namespace tamrix
