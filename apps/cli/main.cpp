// The `tamrix` command.
#include "cli/command_line.h"

int main(int count, char** words)
{
    tamrix::cli::console con;
    return tamrix::cli::run({words + (count > 0 ? 1 : 0), words + count}, con);
}
