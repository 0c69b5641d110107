// POSIX only: it reads the header with the names of the message numbers, which is not there under wine.
#include "messages/catalogue.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace tamrix {
namespace {

TEST(message_numbers, have_their_english_text_beside_their_name)
{
    std::ifstream header{TAMRIX_MESSAGE_NUMBERS};
    int names = 0;
    for (std::string line; std::getline(header, line);) {
        const std::size_t equals = line.find(" = "), comment = line.find("// \"");
        if (equals == std::string::npos || comment == std::string::npos) continue;
        ++names;
        const int number = std::stoi(line.substr(equals + 3));
        EXPECT_EQ(line.substr(comment + 3), '"' + LoadResString(number) + '"') << line;
    }
    EXPECT_GT(names, 90);
}

}  // namespace
}  // namespace tamrix
