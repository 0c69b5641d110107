#include "entry/all_dialogs.h"

#include "device/algoparameter.h"
#include "instruments/analyzer/analyzer.h"
#include "instruments/wave/recetwave.h"
#include "selftest/pinnote.h"
#include "selftest/pinnote204.h"
#include "selftest/pinnote4.h"
#include "selftest/pinnoteISP.h"
#include "selftest/pinnote_sepm.h"
#include "session/session.h"
#include "ttl/dialogs/ttlautotest.h"
#include "ttl/dialogs/ttledit.h"
#include "ttl/dialogs/ttltest.h"

namespace tamrix {

namespace {

/// The tasks of a pin map, besides the self-test's own.
enum pin_map_task : std::uint8_t { leads_of_analyzer = 1, leads_of_meter, leads_of_generator };

void show_pin_map(session& plug_in, selftest_variables& variables, pin_map_task task)
{
    variables.pinmapmode = task;
    pinnote map{plug_in, variables};
    plug_in.screen.show_modal(map);
}

std::unique_ptr<forms::form> make_analyzer(session& plug_in, module_variables& variables)
{
    return std::make_unique<analyzer>(plug_in, variables.analyzer, variables.transfer, [&plug_in, &variables] {
        show_pin_map(plug_in, variables.selftest, leads_of_analyzer);
    });
}

std::unique_ptr<forms::form> make_recetwave(session& plug_in, module_variables& variables)
{
    return std::make_unique<recetwave>(plug_in, variables.wave, [&plug_in, &variables](recetwave::pin_map which) {
        show_pin_map(plug_in, variables.selftest,
                     which == recetwave::pin_map::input ? leads_of_meter : leads_of_generator);
    });
}

}  // namespace

dialog_table all_dialogs()
{
    dialog_table table;
    table.add("algoparameter",
              [](session& plug_in, module_variables&) { return std::make_unique<algoparameter>(plug_in); });
    table.add("analyzer", make_analyzer);
    table.add("recetwave", make_recetwave);
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
