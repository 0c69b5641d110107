#include "plugin/session.h"

#include "plugin/catalogue.h"

#include <utility>

namespace tamrix {

session::session(forms::shell& screen_to_use, std::string name_space)
    : screen{screen_to_use}, blocks{std::move(name_space), [this] {
                                        screen.box({.text = "Unable to create memory mapped file"});
                                    }}
{}

std::string session::text(int base_number) const { return LoadResString(blocks.Language(0) + base_number); }

std::int64_t session::devbytes() const { return std::int64_t{blocks.wordmode(0)} * blocks.tlength(0); }

void session::tell(int base_number) { screen.box({.text = text(base_number)}); }

}  // namespace tamrix
