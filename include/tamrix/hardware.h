/* The interface of a programmer in a shared library. Plain C, so that it can be written in any language.

   A library exports one function, tamrix_hardware_functions(), which returns a table that is valid for the life of the
   process; the library is never unloaded. All calls come from one thread. Bulk reads and replies may arrive on a thread
   of the library.

   A pin is a contact of the socket, given as a "pin code": 1 is the lowest contact of the left column, 101 the lowest
   of the right one. A code without a contact is legal and does nothing. `state` is 1 to connect, 0 to release.

   A tamrix_result of 0 means done; any other value means that the call failed, and error_text() says why. No function
   may throw. */
#ifndef TAMRIX_HARDWARE_H
#define TAMRIX_HARDWARE_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Changes when a table can no longer be used by older programs. New functions go to the end of the table. */
#define TAMRIX_HARDWARE_VERSION 2u

/* The name under which the one function is exported. */
#define TAMRIX_HARDWARE_SYMBOL "tamrix_hardware_functions"

typedef struct tamrix_programmer tamrix_programmer; /* one programmer; its library defines the content */
typedef int32_t tamrix_result;

/* Memory of the caller that the library uses from create() until destroy() has returned. The library writes
   there at any time, also between calls. An address may be null: then nothing goes there or comes from there. */
typedef struct tamrix_reply_memory {
    uint32_t size_bytes; /* sizeof(tamrix_reply_memory) of the caller; new fields go to the end */

    uint8_t* ibuf1;       /* the reply to the last command frame */
    int32_t ibuf1_length; /* in bytes; nothing is written beyond */

    /* A 16-bit boolean. The library sets it to all ones (-1) after it has put a reply into ibuf1 that nobody asked for
       by replywait or replycheck, such as the one at the end of a recording. The caller clears it. */
    int16_t* usbpip0readresult;

    /* The command frame as the caller is building it; the library only reads it. The divider of a signal generator
       travels here: ctlout(low byte, 140) takes its middle byte from ubuf1[2] and its high byte from ubuf1[3]. */
    const uint8_t* ubuf1;
    int32_t ubuf1_length; /* in bytes; nothing is read beyond */
} tamrix_reply_memory;

typedef struct tamrix_hardware {
    uint32_t version;    /* TAMRIX_HARDWARE_VERSION of the library */
    uint32_t size_bytes; /* sizeof(tamrix_hardware) of the library */

    /* Makes a programmer. `replies` itself is gone after the call; its addresses stay. `options` is UTF-8 text for this
       kind of programmer, perhaps empty, never null. Yields null where there is none and puts the reason,
       zero-terminated, into `error`, which has room for `error_bytes` bytes.
     */
    tamrix_programmer* (*create)(const char* options, const tamrix_reply_memory* replies, char* error,
                                 size_t error_bytes);
    /* Ends all transfers: after it returns, nothing is written to the caller's memory. */
    void (*destroy)(tamrix_programmer* which);
    /* Why the last failing call failed: UTF-8, valid until the next call. Never null. */
    const char* (*error_text)(tamrix_programmer* which);

    /* The transport. */

    /* Sends a command frame. Returns 1 on failure, any other value on success. */
    int32_t (*usbcomwrite)(tamrix_programmer* which, const uint8_t* buffer, int32_t length);
    /* Sends one block of data. Returns 1 on failure. */
    int32_t (*usbbulkwrite)(tamrix_programmer* which, const uint8_t* buffer, int32_t length);
    /* Starts a read of length - 1 bytes of data and returns at once. The read continues in the background and writes in
       this order: the data, then 2 to *status (more than 3 on failure), then the end marker 170 to buffer[length - 1].
       A reader that sees one of them also sees what was written before it (release order). Both addresses stay valid
       until the end marker is written or a later usbcomwrite has started something else. The result is ignored. */
    int32_t (*usbbulkread)(tamrix_programmer* which, uint8_t* buffer, int32_t length, uint8_t* status);

    /* The device object. */

    tamrix_result (*setvcc)(tamrix_programmer* which, int32_t millivolts);
    tamrix_result (*setvpp)(tamrix_programmer* which, int32_t millivolts, uint8_t channel); /* channel 0 or 1 */
    tamrix_result (*gndpin)(tamrix_programmer* which, uint8_t pin, uint8_t state);
    tamrix_result (*vccpin)(tamrix_programmer* which, uint8_t pin, uint8_t state);
    tamrix_result (*vpppin)(tamrix_programmer* which, uint8_t pin, uint8_t state);
    tamrix_result (*busmode)(tamrix_programmer* which, int32_t mode); /* 0 normal pin work, 1 read-back */
    tamrix_result (*hwinit)(tamrix_programmer* which);
    /* Switches off all drivers and voltages. *answer becomes 1 if the hardware does not answer. */
    tamrix_result (*hwreset)(tamrix_programmer* which, int32_t* answer);
    tamrix_result (*ctlout)(tamrix_programmer* which, int32_t value, uint8_t address, int32_t* status);
    tamrix_result (*ctlin)(tamrix_programmer* which, uint8_t address, int32_t* value);
    /* Register 2b, written, is the data byte of port b; read, the levels of its pins. Register 2b + 1 is the release
       mask of the port: a 1 bit releases its pin. */
    tamrix_result (*regout)(tamrix_programmer* which, int32_t value, uint8_t address);
    tamrix_result (*regin)(tamrix_programmer* which, uint8_t address, int32_t* value); /* 0 to 255, -1: failed */
    tamrix_result (*delayms)(tamrix_programmer* which, int32_t milliseconds);          /* returns after that time */
    tamrix_result (*delayus)(tamrix_programmer* which, int32_t count);                 /* in microseconds */
    /* Waits for the reply to the last frame. *came becomes 1 when the reply is in ibuf1, 0 if none came. */
    tamrix_result (*replywait)(tamrix_programmer* which, uint8_t count, uint8_t mode, int32_t extra, int32_t* came);

    /* A script: each of these calls adds a step; vecstart sends the steps to the hardware. */
    tamrix_result (*vecout)(tamrix_programmer* which, int32_t value, uint8_t address);
    tamrix_result (*vecstart)(tamrix_programmer* which);
    tamrix_result (*vecbyte)(tamrix_programmer* which, uint8_t address); /* appends the byte to the result stream */
    tamrix_result (*vecdelay)(tamrix_programmer* which, int32_t count);
    tamrix_result (*vecdelay2)(tamrix_programmer* which, int32_t count);
    tamrix_result (*vecgnd)(tamrix_programmer* which, uint8_t pin, uint8_t state);
    tamrix_result (*vecvcc)(tamrix_programmer* which, uint8_t pin, uint8_t state);
    tamrix_result (*vecvpp)(tamrix_programmer* which, uint8_t pin, uint8_t state);

    /* Waits for a bare acknowledge, which arrives in ibuf1[0]: 0 is success. */
    tamrix_result (*replycheck)(tamrix_programmer* which, int32_t count);
    tamrix_result (*hwrelease)(tamrix_programmer* which);
    tamrix_result (*hwfault)(tamrix_programmer* which);
    tamrix_result (*boardsel)(tamrix_programmer* which, uint8_t code, int32_t* answer); /* 2: refused */
    tamrix_result (*boardsel2)(tamrix_programmer* which, uint8_t first, uint8_t second);
} tamrix_hardware;

/* The type of the exported function. */
typedef const tamrix_hardware* (*tamrix_hardware_functions_type)(void);

#ifdef __cplusplus
}
#endif

#endif
