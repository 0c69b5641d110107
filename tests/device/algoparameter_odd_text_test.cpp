// What the parameter dialog makes of texts and values that are no good ones.
#include "parameter_fixture.h"

#include <limits>

namespace tamrix::tests {
namespace {

const std::string forty_digits(40, '9');

TEST_F(algoparameter_dialog, takes_a_value_within_its_limits_from_every_odd_text)
{
    const programming device{.bvcc = 500, .bvpp = 1300, .pulse_us = 100, .wretry = 10};
    const auto with = [&](auto programming::*member, auto value) {
        programming changed = device;
        changed.*member = value;
        return changed;
    };
    constexpr std::int32_t longest = std::numeric_limits<std::int32_t>::max();
    const struct {
        forms::text_box algoparameter::*box;
        std::string typed;
        programming taken;
    } lines[] = {
        {vcc, "", with(&programming::bvcc, 160)},
        {vcc, ".", with(&programming::bvcc, 160)},
        {vcc, "..", with(&programming::bvcc, 160)},
        {vcc, "5.0.1", with(&programming::bvcc, 500)},
        {vcc, forty_digits, with(&programming::bvcc, 700)},
        {pulse, "", with(&programming::pulse_us, 1)},
        {pulse, "4000000000", with(&programming::pulse_us, longest)},
        {pulse, forty_digits, with(&programming::pulse_us, longest)},
        {vpp, "", with(&programming::bvpp, 160)},
        {vpp, ".", with(&programming::bvpp, 160)},
        {vpp, "12.0.0.7", with(&programming::bvpp, 1200)},
        {vpp, forty_digits, with(&programming::bvpp, 1300)},
        {retry, "", with(&programming::wretry, 10)},
        {retry, "0", with(&programming::wretry, 0)},
        {retry, "32768", with(&programming::wretry, 32767)},
        {retry, forty_digits, with(&programming::wretry, 32767)},
    };
    for (const auto& line : lines) {
        select(device);
        confirm_with(line.box, line.typed);
        EXPECT_EQ(stored(), line.taken) << line.typed;
    }
    EXPECT_TRUE(shell.boxes().empty());
}

TEST_F(algoparameter_dialog, takes_a_page_within_its_limits_from_every_odd_text)
{
    for (const auto& [typed, page] : {std::pair<std::string, int>{"", 64},
                                      {".", 64},
                                      {"0", 0},
                                      {"128.0.1", 128},
                                      {"64.5", 64},
                                      {"65.5", 66},
                                      {"32768", 32767},
                                      {forty_digits, 32767}}) {
        select({.bvpp = 0, .pagelength = 64});
        confirm_with(vpp, typed);
        EXPECT_EQ(session.blocks.pagelength(0), page) << typed;
    }
}

TEST_F(algoparameter_dialog, shows_what_it_takes_of_an_odd_text_when_the_box_is_left)
{
    select({});
    EXPECT_EQ(after_leaving(vcc, "5.0.1"), "5.00");
    EXPECT_EQ(after_leaving(vpp, "."), "1.60");
    EXPECT_EQ(after_leaving(pulse, forty_digits), "2147483647");
    EXPECT_EQ(after_leaving(retry, ""), "10");
    EXPECT_EQ(after_leaving(retry, forty_digits), "32767");
    select({.pulse_us = 1000});
    EXPECT_EQ(after_leaving(pulse, forty_digits), "2147483.647");
    select({.bvpp = 4, .prgmode = 1, .algo = "WSEPM"});
    EXPECT_EQ(after_leaving(retry, ""), "4") << "the address that stood there";
}

TEST_F(algoparameter_dialog, gives_back_odd_values_of_the_blocks_within_their_limits)
{
    select({.bvcc = -32768, .bvpp = -32768, .pulse_us = -5, .wretry = -3});
    open([](algoparameter& d) { d.OKButton.click(); });
    EXPECT_EQ(stored(), (programming{.bvcc = 160, .bvpp = -32768, .pulse_us = 1, .wretry = -3}));
    constexpr std::int32_t longest = std::numeric_limits<std::int32_t>::max();
    select({.bvcc = 32767, .bvpp = 32767, .pulse_us = longest, .wretry = 32767});
    open([](algoparameter& d) { d.OKButton.click(); });
    EXPECT_EQ(stored(), (programming{.bvcc = 700, .bvpp = 2600, .pulse_us = longest, .wretry = 32767}));
}

}  // namespace
}  // namespace tamrix::tests
