/* How a programmer is reached on Windows where nothing else is said: by a transport library, lumbat.dll, and by a
   device object that COM makes. Who writes one of them, or a host, includes this. Plain C; all sizes are those of
   32-bit code.

   The transport library is looked for as Windows looks for any library: first in the folder of the host's program. It
   is loaded by the first call that needs it and never unloaded. It exports three stdcall functions by their plain
   names; those that compilers give them, _usbcomwrite@8, _usbbulkwrite@8 and _usbbulkread@12, with or without the
   underscore, will do as well.

   The device object is an automation object. Its class is known under the ProgID below, or under what the environment
   variable TAMRIX_DEVOBJ says: another ProgID, or a class identifier in braces. It is made by the first call that
   needs it, in the apartment of the host's thread, and never released. Every operation is found by its name
   (IDispatch::GetIDsOfNames, once a name) and called as a method, its arguments by reference (VT_BYREF | VT_I4,
   VT_BYREF | VT_UI1). The operations and their meaning are those of the device object in hardware.h, with these
   differences: what stands there as an address behind the arguments (answer, status, value, came) is the method's
   result, any variant that can become a number, empty for 0; and a failed call is a failed Invoke, with a text where
   there is one. replywait's result is a boolean.

   Where replies land: usbbulkread is told where its data and its progress go. All else is in three blocks of the host,
   which nobody passes: transport and device object know their host and open them by name themselves
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

/* Sends a command frame. Yields 1 on failure, any other value when sent. */
typedef int32_t(__stdcall* tamrix_usbcomwrite)(const uint8_t* buffer, int32_t length);
/* Sends one block of data. Yields 1 on failure. */
typedef int32_t(__stdcall* tamrix_usbbulkwrite)(const uint8_t* buffer, int32_t length);
/* Starts a read of length - 1 bytes of data and returns at once. The read runs on in a context of its own: the data,
   then 2 into *status (more than 3 on failure), then the end marker 170 into buffer[length - 1]. Both addresses stay
   valid until then, or until a later usbcomwrite has begun something else. The result does not count. */
typedef int32_t(__stdcall* tamrix_usbbulkread)(uint8_t* buffer, int32_t length, uint8_t* status);

#ifdef __cplusplus
}
#endif

#endif
