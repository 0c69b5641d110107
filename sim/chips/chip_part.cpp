// The interpreter: one lane of a circuit as a part in the socket.
#include "chips/chip.h"
#include "chips/lanes.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>

namespace tamrix::sim {
namespace {

class chip_part final : public part {
public:
    explicit chip_part(std::shared_ptr<const circuit> plan) : lane_{std::move(plan)} {}

    int pins() const override { return static_cast<int>(lane_.plan().pins.size()); }
    int vcc_pin() const override { return lane_.plan().vcc; }
    int gnd_pin() const override { return lane_.plan().gnd; }
    void power_up() override { lane_.power_up({}); }

    void settle(std::span<const level> nodes, std::span<level> drives) override
    {
        const auto count = lane_.plan().pins.size();
        for (std::size_t pin = 0; pin < std::min(count, nodes.size()); ++pin)
            lane_.set_node(pin, nodes[pin] == level::low ? 0 : 1);
        lane_.settle();
        for (std::size_t pin = 0; pin < std::min(count, drives.size()); ++pin) {
            const bool high = (lane_.level(pin) & 1) != 0;
            drives[pin] = (lane_.driven(pin) & 1) == 0 ? level::open : high ? level::high : level::low;
        }
    }

private:
    lanes lane_;
};

}  // namespace

std::unique_ptr<part> make_part(const chip& from) { return std::make_unique<chip_part>(from.plan); }

part_shelf shelf_of_folder(std::filesystem::path folder)
{
    auto read = std::make_shared<std::optional<std::vector<chip>>>();
    return [folder = std::move(folder), read](std::string_view name) -> part_source {
        if (!*read) *read = load_chips(chip_files(folder));
        const chip* const found = find_chip(**read, name);
        if (found == nullptr) throw std::invalid_argument{"there is no chip \"" + std::string{name} + "\""};
        return [plan = found->plan] { return std::make_unique<chip_part>(plan); };
    };
}

}  // namespace tamrix::sim
