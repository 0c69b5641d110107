// The `tamrix` command.
#include "cli/command_line.h"
#include "files/unfinished.h"

int main(int count, char** words)
{
    tamrix::remove_unfinished_at_signals();
    tamrix::cli::console con;
    return tamrix::cli::run({words + (count > 0 ? 1 : 0), words + count}, con);
}
