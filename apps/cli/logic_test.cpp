#include "cli/logic_test.h"

#include "host/data_folder.h"

namespace tamrix::cli {

void logic_test(const ttl_words& words, std::int32_t language, console& con)
{
    const std::string installed = host::data_folder() + "/";
    const ttl_options options{
        .syspath = words.syspath.value_or(installed), .socket = check(words.socket), .language = language};
    if (words.command == "list") return ttl_list(options, con);
    if (words.command == "show") return ttl_show(options, words.name, con);
    if (words.command == "test") return ttl_test(options, words.name, con);
    if (words.command == "find") return ttl_find(options, con);
    if (words.command == "add") return ttl_add(options, words.name, words.pins, words.file, con);
    if (words.command == "delete") return ttl_delete(options, words.name, con);
    vectors(options, words.file, con);
}

}  // namespace tamrix::cli
