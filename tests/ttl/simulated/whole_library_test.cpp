// Every device of the shipped library, on every engine, with its own chip in the socket.
#include "ttl/run/ttlload.h"
#include "ttl/run/ttlscan.h"
#include "ttl/simulated/socket_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace tamrix::tests {
namespace {

using engine = run_outcome (*)(session&, ttl_variables&, std::int16_t, std::int16_t, std::int16_t, std::uint8_t);

struct way {
    const char* name;
    engine run;
    std::int16_t model;
    bool usb;
};

class every_device : public testing::TestWithParam<way> {
protected:
    /// Plays a device's vectors on the chip in the socket; true where they pass.
    static bool passes(socket_fixture& f, const std::string& name)
    {
        ttlload(f.session, f.variables.ttl, name, 0, -1);
        if (!prepare_supply(f.session, f.variables.ttl, name)) return false;
        f.session.blocks.prgresult(0) = 0;
        const auto& ttl = f.variables.ttl;
        const run_outcome outcome = GetParam().run(f.session, f.variables.ttl, ttl.ttlcnt, ttl.ttlpin, -1, 0);
        f.session.hardware.device().hwrelease();
        EXPECT_FALSE(outcome.communication_failed());
        return outcome.what == run_outcome::kind::passed;
    }
};

TEST_P(every_device, passes_its_own_vectors_and_nothing_comes_to_harm)
{
    socket_fixture f{GetParam().model, GetParam().usb};
    const auto devices = f.devices();
    ASSERT_GE(devices.size(), 150u);
    for (const std::string& name : devices) {
        f.insert(name);
        EXPECT_TRUE(passes(f, name)) << name;
        f.programmer->check_idle();
        ASSERT_EQ(f.hazards(), "") << name;
    }
}

/// A pin that no row looks at and none drives is not connected in the chip.
bool unused(const ttl_variables& ttl, int pin)
{
    for (int row = 0; row + 1 < ttl.ttlcnt; ++row) {
        if (ttl.ttlvect(static_cast<std::size_t>(row))[static_cast<std::size_t>(pin) - 1] != 'X') return false;
    }
    return true;
}

TEST_P(every_device, fails_without_its_chip)
{
    socket_fixture f{GetParam().model, GetParam().usb};
    for (const std::string& name : f.devices()) EXPECT_FALSE(passes(f, name)) << name;
}

INSTANTIATE_TEST_SUITE_P(
    engines, every_device,
    testing::Values(way{"runport_on_the_registers", runport, 40, false}, way{"runport_over_usb", runport, 40, true},
                    way{"runbatch", runbatch, 40, true}, way{"runbatch_on_model_15", runbatch, 15, true},
                    way{"runport40", runport40, 22, true}, way{"runport40_on_model_23", runport40, 23, true},
                    way{"runbatch40", runbatch40, 22, true}, way{"runbatch40_on_model_23", runbatch40, 23, true}),
    [](const auto& tested) { return std::string{tested.param.name}; });

/// The maker of the vectors counts what they find; this counts it again, with the engine and the programmer.
TEST(every_pin_fault, but_one_in_a_hundred_is_found_by_the_engine)
{
    socket_fixture f{40, true};
    int all = 0, found = 0;
    std::string missed;
    for (const std::string& name : f.devices()) {
        f.insert(name);
        ttlload(f.session, f.variables.ttl, name, 0, -1);
        for (int pin = 1; pin <= f.variables.ttl.ttlpin; ++pin) {
            for (const std::string kind : {" stuck 0", " stuck 1", " open"}) {
                const std::string fault = "pin " + std::to_string(pin) + kind;
                const char letter = f.variables.ttl.ttlvect(0)[static_cast<std::size_t>(pin) - 1];
                if (letter == 'X' && unused(f.variables.ttl, pin)) continue;
                const bool no_fault = (letter == 'G' && kind == " stuck 0") || (letter == 'V' && kind == " stuck 1");
                if (no_fault) continue;  // that is where a supply pin is held anyway
                f.programmer->add_fault(fault);
                ASSERT_TRUE(prepare_supply(f.session, f.variables.ttl, name));
                f.session.blocks.prgresult(0) = 0;
                const auto seen =
                    runbatch(f.session, f.variables.ttl, f.variables.ttl.ttlcnt, f.variables.ttl.ttlpin, -1, 0).what;
                f.session.hardware.device().hwrelease();
                f.programmer->clear_faults();
                ++all;
                found += seen == run_outcome::kind::failed;
                if (seen != run_outcome::kind::failed) missed += name + " " + fault + "\n";
            }
        }
    }
    std::printf("%d of %d found; not found:\n%s", found, all, missed.c_str());
    EXPECT_GE(found * 100, all * 99);
}

struct finding {
    const char* name;
    std::int16_t model;
    bool usb;
    std::size_t every;  // chip of so many is tried: scripts take longer, and play the same vectors
};

class auto_find : public testing::TestWithParam<finding> {};

/// What else is named with a device: those whose vectors this chip passes too.
TEST_P(auto_find, names_every_device_that_sits_in_the_socket)
{
    socket_fixture f{GetParam().model, GetParam().usb};
    std::map<std::string, std::set<std::string>> named_with;
    for (std::size_t i = 0; i < all_chips().size(); i += GetParam().every) {
        const sim::chip& chip = all_chips()[i];
        f.insert(chip.name);
        std::vector<std::string> hits;
        ttlscan(f.session, f.variables.ttl, [&](const std::vector<std::string>& found) { hits = found; });
        EXPECT_NE(std::ranges::find(hits, chip.name), hits.end()) << chip.name;
        for (const std::string& alias : chip.aliases) {
            EXPECT_NE(std::ranges::find(hits, alias), hits.end()) << alias << ", the same as " << chip.name;
        }
        for (const std::string& hit : hits) {
            const bool itself = hit == chip.name || std::ranges::find(chip.aliases, hit) != chip.aliases.end();
            if (!itself) named_with[chip.name].insert(hit);
        }
    }
    for (const auto& [name, others] : named_with) {
        std::string line = name + ":";
        for (const std::string& other : others) line += " " + other;
        std::puts(line.c_str());
    }
}

INSTANTIATE_TEST_SUITE_P(routes, auto_find,
                         testing::Values(finding{"model_40_over_usb", 40, true, 7},
                                         finding{"model_40_on_the_registers", 40, false, 1},
                                         finding{"model_22_over_usb", 22, true, 7}),
                         [](const auto& tested) { return std::string{tested.param.name}; });

}  // namespace
}  // namespace tamrix::tests
