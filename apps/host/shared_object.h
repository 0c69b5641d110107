// One named shared-memory object, open and mapped for as long as it lives.
#pragma once

#include "tamrix/named_memory.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tamrix::host {

class shared_object {
public:
    /// Opens the object, or creates it with `length_bytes` zero bytes. Throws std::runtime_error that says which object
    /// and why.
    shared_object(std::string object, std::uint32_t length_bytes);
    ~shared_object();
    shared_object(const shared_object&) = delete;
    shared_object& operator=(const shared_object&) = delete;

    unsigned char* bytes() const { return bytes_; }
    /// Bytes that can be reached: the object's length, rounded up to whole pages.
    std::size_t reach_bytes() const { return reach_bytes_; }
    /// True if this side created it.
    bool created() const { return created_; }
    /// Removes the name: whoever has the object open keeps it, nobody else can open it.
    void withdraw_name() const;

private:
    std::string object_;
    named_memory::handle file_;
    unsigned char* bytes_ = nullptr;
    std::size_t reach_bytes_ = 0;
    bool created_ = false;
};

}  // namespace tamrix::host
