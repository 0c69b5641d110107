#include "blocks/clsMemMapped.h"

#include "tamrix/blocks.h"

#include <utility>

namespace tamrix {

clsMemMapped::clsMemMapped(std::string name_space) : name_space_{std::move(name_space)} {}

clsMemMapped::~clsMemMapped()
{
    if (file_ != 0 && !UnMapFile()) close();
    for (const auto& [probe, probed] : probes_) named_memory::close(probe, probed);
}

void clsMemMapped::close()
{
    named_memory::close(file_, opened_);
    file_ = 0;
}

bool clsMemMapped::UnMapFile()
{
    if (!named_memory::unmap(base_address_, reach_bytes_)) return false;
    close();
    base_address_ = nullptr;
    reach_bytes_ = 0;
    mapped_file_.clear();
    mapped_size_ = 0;
    return true;
}

bool clsMemMapped::OpenAndMapMemoryBlock(const std::string& name, std::int32_t size)
{
    if (file_ != 0 && !UnMapFile()) close();
    opened_ = object(name);
    file_ = named_memory::open_or_create(opened_, size > 0 ? static_cast<std::uint32_t>(size) : 0);
    if (file_ == 0) return false;
    base_address_ = named_memory::map(file_);
    if (base_address_ == nullptr) return false;
    reach_bytes_ = named_memory::reach_bytes(file_);
    mapped_file_ = name;
    mapped_size_ = size;
    return true;
}

std::int16_t clsMemMapped::findnum()
{
    std::int16_t number = 0;
    for (; number < 101; ++number) {
        const std::string probed = object(small_block_object("ibuf1", number));
        const named_memory::handle probe = named_memory::open(probed);
        if (probe == 0) break;
        // Intentional: stays open, so that a number found taken stays taken as long as this object lives.
        probes_.emplace_back(probe, probed);
    }
    return number;
}

}  // namespace tamrix
