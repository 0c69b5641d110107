#include "entry/all_dialogs.h"

#include "device/algoparameter.h"
#include "selftest/pinnote.h"
#include "selftest/pinnote204.h"
#include "selftest/pinnote4.h"
#include "selftest/pinnoteISP.h"
#include "selftest/pinnote_sepm.h"
#include "ttl/dialogs/ttlautotest.h"
#include "ttl/dialogs/ttledit.h"
#include "ttl/dialogs/ttltest.h"

namespace tamrix {

dialog_table all_dialogs()
{
    dialog_table table;
    table.add("algoparameter",
              [](session& plug_in, module_variables&) { return std::make_unique<algoparameter>(plug_in); });
    table.add("pinnote", [](session& plug_in, module_variables& variables) {
        return std::make_unique<pinnote>(plug_in, variables.selftest);
    });
    table.add("pinnote204", [](session& plug_in, module_variables& variables) {
        return std::make_unique<pinnote204>(plug_in, variables.selftest);
    });
    table.add("pinnote4", [](session& plug_in, module_variables& variables) {
        return std::make_unique<pinnote4>(plug_in, variables.selftest);
    });
    table.add("pinnoteISP", [](session& plug_in, module_variables& variables) {
        return std::make_unique<pinnoteISP>(plug_in, variables.selftest);
    });
    table.add("pinnote_sepm", [](session& plug_in, module_variables& variables) {
        return std::make_unique<pinnote_sepm>(plug_in, variables.selftest);
    });
    table.add("ttltest", [](session& plug_in, module_variables& variables) {
        return std::make_unique<ttltest>(plug_in, variables.ttl, variables.pld);
    });
    table.add("ttledit", [](session& plug_in, module_variables& variables) {
        return std::make_unique<ttledit>(plug_in, variables.ttl, variables.pld);
    });
    table.add("ttlautotest", [](session& plug_in, module_variables& variables) {
        return std::make_unique<ttlautotest>(plug_in, variables.ttl);
    });
    return table;
}

}  // namespace tamrix
