/* How the plug-in reaches a programmer on Windows by default: through a transport library, lumbat.dll, and a device
   object that COM creates. Include this to implement either of them, or a host. Plain C; sizes are those of 32-bit
   code.

   Windows searches for the transport library as for any other, first in the folder of the host's program. The first
   call that needs it loads it; it is never unloaded. It exports three stdcall functions, either by their plain names or
   as compilers decorate them: _usbcomwrite@8, _usbbulkwrite@8 and _usbbulkread@12, with or without the underscore.

   The device object is an automation object. Its class has the ProgID below, unless the environment variable
   TAMRIX_DEVOBJ names another ProgID or a class identifier in braces. The first call that needs the object creates it,
   in the apartment of the host's thread; it is never released. Each operation is looked up by its name
   (IDispatch::GetIDsOfNames, once a name) and called as a method with its arguments by reference (VT_BYREF | VT_I4,
   VT_BYREF | VT_UI1). The operations and their meaning are those of the device object in hardware.h, with two
   differences. Where an operation there writes its answer to a pointer, its last argument (answer, status, value,
   came), here it is the result of the method: any variant that converts to a number, empty for 0; a boolean for
   replywait. And a call fails by a failing Invoke, with a text if there is one.

   Where replies land: usbbulkread receives the addresses of its data and its progress. All else is in three blocks of
   the host, which nobody passes: transport and device object know their host and open them by name themselves
   (tamrix/blocks.h).
   - ibuf1 takes the reply to a command frame. The reply is there before replywait or replycheck returns.
   - usbpip0readresult, a 16-bit boolean: its first element becomes all ones (-1) after a reply has been put into ibuf1
     that nobody asked for by replywait or replycheck, such as the one at the end of a recording. The plug-in clears it.
   - ubuf1 is only read. The divider of a signal generator travels there: ctlout(low byte, 140) takes its middle byte
     from ubuf1(2) and its high byte from ubuf1(3). */
#ifndef TAMRIX_WINDOWS_PROGRAMMER_H
#define TAMRIX_WINDOWS_PROGRAMMER_H

#include <stdint.h>

#define TAMRIX_LUMBAT_FILE "lumbat.dll"
#define TAMRIX_DEVOBJ_PROG_ID L"lumbat.devobj"
#define TAMRIX_DEVOBJ_VARIABLE L"TAMRIX_DEVOBJ"

#ifdef __cplusplus
extern "C" {
#endif

/* Sends a command frame. Returns 1 on failure, any other value on success. */
typedef int32_t(__stdcall* tamrix_usbcomwrite)(const uint8_t* buffer, int32_t length);
/* Sends one block of data. Returns 1 on failure. */
typedef int32_t(__stdcall* tamrix_usbbulkwrite)(const uint8_t* buffer, int32_t length);
/* Starts a read of length - 1 bytes of data and returns at once. The read continues in the background and writes in
   this order: the data, then 2 to *status (more than 3 on failure), then the end marker 170 to buffer[length - 1]. Both
   addresses stay valid until the end marker is written or a later usbcomwrite has started something else. The result is
   ignored. */
typedef int32_t(__stdcall* tamrix_usbbulkread)(uint8_t* buffer, int32_t length, uint8_t* status);

#ifdef __cplusplus
}
#endif

#endif
