#include "blocks/sharemap.h"

#include <utility>

namespace tamrix {

sharemap::sharemap(std::string name_space, std::function<void()> on_failure)
    : name_space_{std::move(name_space)}, on_failure_{std::move(on_failure)}
{}

void sharemap::attach(block_base& view, const std::string& object, std::int32_t mapped_bytes, std::uint32_t count)
{
    if (!view.attach(name_space_, object, mapped_bytes, count)) on_failure_();
}

void sharemap::attachsmall(std::int16_t num)
{
    for (block_base* view : small()) {
        const block_info& line = view->info();
        attach(*view, small_block_object(line.name, num), static_cast<std::int32_t>(line.mapped_bytes), line.count);
    }
}

void sharemap::attachbig(std::int32_t size)
{
    attach(ibuffer, big_block_object(ibuffer.name()), size, static_cast<std::uint32_t>(size));
    const block_info& line = ibuffer66.info();
    attach(ibuffer66, big_block_object(line.name), static_cast<std::int32_t>(line.mapped_bytes), line.count);
}

void sharemap::releasebig()
{
    ibuffer.release();
    ibuffer66.release();
}

std::array<block_base*, 60> sharemap::small()
{
#define TAMRIX_ADDRESS(name, mapped_bytes, kind, count) &name,
    return {TAMRIX_SMALL_BLOCKS(TAMRIX_ADDRESS)};
#undef TAMRIX_ADDRESS
}

}  // namespace tamrix
