#include "entry/all_dialogs.h"

#include "device/algoparameter.h"
#include "ttl/dialogs/ttlautotest.h"
#include "ttl/dialogs/ttledit.h"
#include "ttl/dialogs/ttltest.h"

namespace tamrix {

namespace {

template <class Dialog>
std::unique_ptr<forms::form> make(session& plug_in, module_variables&)
{
    return std::make_unique<Dialog>(plug_in);
}

}  // namespace

dialog_table all_dialogs()
{
    dialog_table table;
    table.add("algoparameter", make<algoparameter>);
    table.add("ttltest", make<ttltest>);
    table.add("ttledit", make<ttledit>);
    table.add("ttlautotest", make<ttlautotest>);
    return table;
}

}  // namespace tamrix
