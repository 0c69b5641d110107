// The wait for one bulk read of a vector run.
#pragma once

#include <cstdint>

namespace tamrix {

class session;

/// Starts the read of `length` bytes and waits for it, 4000 ms at most while the message loop runs. Pipe 0 reads into
/// `ibuffer` at `offset`, pipes 2 and 5 read 65 bytes into `ibuf2`, every other one `length` bytes into `ibuf2`. Yields
/// 0 when the data have arrived; 1 with `prgresult(0)` at 3 when not.
int resultwait(session& plug_in, int pipe, std::int32_t offset, std::int32_t length);

}  // namespace tamrix
