// Lays an array's descriptor over foreign memory and puts it back on release.
#pragma once

#include "blocks/safe_array.h"

#include <cstdint>
#include <vector>

namespace tamrix {

/// While attached, the properties read and write the attached descriptor; detached, a private one. No operation raises
/// an error.
class clsSafeArray {
public:
    clsSafeArray() = default;
    ~clsSafeArray();
    clsSafeArray(const clsSafeArray&) = delete;
    clsSafeArray& operator=(const clsSafeArray&) = delete;

    std::uint16_t Dimensions() const { return header_->dimensions; }
    /// Takes effect only where `count` is not above the count found at attach time.
    void Dimensions(std::uint16_t count);
    std::uint16_t Features() const { return header_->features; }
    void Features(std::uint16_t flags) { header_->features = flags; }
    std::uint32_t SizeofElements() const { return header_->element_bytes; }
    void SizeofElements(std::uint32_t bytes) { header_->element_bytes = bytes; }
    std::uint32_t Locks() const { return header_->locks; }
    void Locks(std::uint32_t count) { header_->locks = count; }
    void* PointerToData() const { return header_->data; }
    void PointerToData(void* address) { header_->data = address; }
    /// By dimension from 1; a dimension outside the attached range reads 0 and ignores a write.
    std::int32_t LowerBound(int dimension) const;
    void LowerBound(int dimension, std::int32_t bound);
    std::uint32_t CountOfElements(int dimension) const;
    void CountOfElements(int dimension, std::uint32_t count);

    /// Attaches the descriptor that starts with `array`, and locks it; a null address attaches nothing. What was
    /// attached before is released first.
    void AttachToArray(array_header* array);
    /// Writes the saved header and bounds back over the attached descriptor; that undoes every change made through this
    /// overlay.
    void ReleaseArray();

private:
    bool in_range(int dimension) const;

    array_descriptor<1> detached_;
    array_header* header_ = &detached_.header;
    array_bounds* bounds_ = detached_.bounds;
    array_header* attached_ = nullptr;
    array_header saved_header_;
    std::vector<array_bounds> saved_bounds_;
};

}  // namespace tamrix
