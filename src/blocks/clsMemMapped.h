// Owns one named memory mapping: opens what exists or creates it, and maps the whole of it.
#pragma once

#include "tamrix/named_memory.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tamrix {

/// Empty, or mapped. No operation raises an error; failure is the false result.
class clsMemMapped {
public:
    /// `name_space` is put before every object name.
    explicit clsMemMapped(std::string name_space = {});
    ~clsMemMapped();
    clsMemMapped(const clsMemMapped&) = delete;
    clsMemMapped& operator=(const clsMemMapped&) = delete;

    /// Start of the mapped view; null when nothing is mapped.
    void* BaseAddress() const { return base_address_; }
    /// The mapping object; 0 when nothing is open.
    named_memory::handle hFile() const { return file_; }
    /// Name of the mapping, without the name space; empty when nothing is mapped.
    const std::string& MappedFile() const { return mapped_file_; }
    /// The size that was asked for, not the real size of a mapping that existed before.
    std::int32_t MappedSize() const { return mapped_size_; }
    /// Bytes that can be touched from BaseAddress on: the real size in whole pages.
    std::size_t reach_bytes() const { return reach_bytes_; }

    /// Unmaps and closes. Returns false if nothing is mapped.
    bool UnMapFile();
    /// Opens the mapping `name`, or creates it with `size` bytes, and maps all of it. `size` counts only for a mapping
    /// that this call creates.
    bool OpenAndMapMemoryBlock(const std::string& name, std::int32_t size);
    /// The first instance number, 0 to 100, that has no block set yet; 101 if all are taken. The blocks that it
    /// finds stay open until this object is destroyed.
    std::int16_t findnum();

private:
    std::string object(const std::string& name) const { return name_space_ + name; }
    void close();

    std::string name_space_;
    named_memory::handle file_ = 0;
    std::string opened_;  // the object name of file_
    void* base_address_ = nullptr;
    std::size_t reach_bytes_ = 0;
    std::string mapped_file_;
    std::int32_t mapped_size_ = 0;
    std::vector<std::pair<named_memory::handle, std::string>> probes_;
};

}  // namespace tamrix
