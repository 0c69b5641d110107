// The dialogs of the entry methods.
#pragma once

#include "entry/dialogs.h"

namespace tamrix {

dialog_table all_dialogs();

}  // namespace tamrix
