// The recording programmer without anything between it and the session; the Windows tests have another way to it.
#include "support/recording_programmer.h"

namespace tamrix::tests {

hw::programmer_source recording_programmer(recording& log)
{
    return [&log](const hw::reply_memory& replies) { return make_recorder(log, replies); };
}

}  // namespace tamrix::tests
