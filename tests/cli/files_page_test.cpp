#include "cli/page_examples.h"

namespace tamrix::tests {

TEST(the_page_on_files, shows_what_the_command_prints) { expect_real_examples("files.md", 10); }

}  // namespace tamrix::tests
