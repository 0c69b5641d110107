// Standard input and output as streams of bytes.
#pragma once

#include "files/byte_source.h"
#include "files/byte_target.h"

namespace tamrix::cli {

class standard_input final : public byte_source {
public:
    std::size_t read(std::span<std::uint8_t> target) override;
};

class standard_output final : public byte_target {
public:
    void write(std::span<const std::uint8_t> bytes) override;
};

}  // namespace tamrix::cli
