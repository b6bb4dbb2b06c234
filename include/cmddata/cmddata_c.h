/* The C interface of cmddata: any class by name, its bytes and its JSON, and named regions,
 * for programs in C or any language that calls C (and for Windows programs built with another
 * compiler than the DLL's). Plain C99; nothing here throws or aborts. Every function that can
 * fail returns a result code: the library's own and the CMDDATA_E_* codes of this interface. */
#ifndef CMDDATA_CMDDATA_C_H
#define CMDDATA_CMDDATA_C_H

#include <stddef.h>
#include <stdint.h>

#include "cmddata/platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The library's result codes. */
#define CMDDATA_OK 0x00000000u
#define CMDDATA_BAD_ARGUMENT 0xC0080001u  /* a null pointer or a size out of range */
#define CMDDATA_OUT_OF_MEMORY 0xA0080002u
#define CMDDATA_PAST_END 0x80080003u      /* the bytes end inside the message */
#define CMDDATA_NOT_ATTACHED 0xA0080004u
#define CMDDATA_VERIFY_FAILED 0xA0080005u /* the region changed while it was copied */
/* The C interface's own. */
#define CMDDATA_E_UNKNOWN_CLASS 0xC00C0001u    /* no class of that name */
#define CMDDATA_E_BAD_JSON 0xC00C0002u         /* the text is not JSON of the message's class */
#define CMDDATA_E_BUFFER_TOO_SMALL 0x800C0003u /* the size needed is reported beside */
#define CMDDATA_E_NOT_DECODED 0xA00C0004u      /* no class takes the bytes whole */
#define CMDDATA_E_NO_REGION 0xA00C0005u        /* the region cannot be created or opened */

/* One object of any class of the library. */
typedef struct cmddata_message cmddata_message;
/* A named shared-memory region and this process's view of it. */
typedef struct cmddata_region cmddata_region;

/* The classes of the library, records and messages; NULL past the end. */
CMDDATA_API size_t CMDDATA_CDECL cmddata_class_count(void);
CMDDATA_API const char* CMDDATA_CDECL cmddata_class_name(size_t index);

/* A new, empty object of the class built with the version (version < 0: the class's default; a
 * class whose constructor fixes its version keeps that one). NULL for an unknown class, a version
 * above 65535 or no memory. */
CMDDATA_API cmddata_message* CMDDATA_CDECL cmddata_new(const char* class_name, int version);
CMDDATA_API void CMDDATA_CDECL cmddata_free(cmddata_message* m);
/* The object's class name and version (NULL and -1 for a null object). */
CMDDATA_API const char* CMDDATA_CDECL cmddata_message_class(const cmddata_message* m);
CMDDATA_API int CMDDATA_CDECL cmddata_message_version(const cmddata_message* m);

/* Reads the object from size bytes; *consumed (may be NULL) is how many it took. The result is
 * the first transfer that failed, CMDDATA_OK when the whole object came in. */
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_read(cmddata_message* m, const void* bytes, size_t size,
                                                size_t* consumed);
/* Writes the object into capacity bytes; *written is the size it takes. Too small a capacity
 * (0 with bytes NULL measures) gives CMDDATA_E_BUFFER_TOO_SMALL and writes nothing. */
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_write(const cmddata_message* m, void* bytes,
                                                 size_t capacity, size_t* written);
/* The object as one line of JSON, NUL-terminated; *needed is its size with the NUL. Too small a
 * capacity gives CMDDATA_E_BUFFER_TOO_SMALL and writes nothing. */
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_to_json(const cmddata_message* m, char* out,
                                                   size_t capacity, size_t* needed);
/* Replaces the object's fields with those of a NUL-terminated JSON text (absent fields are
 * empty; the version stays). On CMDDATA_E_BAD_JSON the object is unchanged and error (may be
 * NULL) holds the JSON path and what is wrong, cut to error_capacity with its NUL. */
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_from_json(cmddata_message* m, const char* json,
                                                     char* error, size_t error_capacity);
/* Finds the message that size bytes hold, as `cmddata dump` does: the command identifier where
 * a plain or a prefixed header puts it, then the side whose class takes all the bytes at its
 * default version (one whose object writes them again unchanged first). The fields are taken
 * where the sender's Write put them, so that writing the object gives these very bytes. *out
 * is a new object to free, NULL with CMDDATA_E_NOT_DECODED. */
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_decode(const void* bytes, size_t size,
                                                  cmddata_message** out);

/* A short English name of a result code; never NULL. */
CMDDATA_API const char* CMDDATA_CDECL cmddata_result_name(uint32_t code);

/* Creates a named region of size bytes (the name belongs to its creator), or opens one made by
 * another process. *out is NULL on failure. */
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_region_create(const char* name, uint32_t size,
                                                         cmddata_region** out);
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_region_open(const char* name, cmddata_region** out);
CMDDATA_API void CMDDATA_CDECL cmddata_region_close(cmddata_region* r);
/* The bytes the region holds (0 for a null region). */
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_region_size(const cmddata_region* r);
/* Writes the object at the start of the region, or reads it from there, through the library's
 * streams over the region's mapping. Results as cmddata_write and cmddata_read. */
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_region_write(cmddata_region* r,
                                                        const cmddata_message* m, size_t* written);
CMDDATA_API uint32_t CMDDATA_CDECL cmddata_region_read(cmddata_region* r, cmddata_message* m,
                                                       size_t* consumed);

#ifdef __cplusplus
}
#endif

#endif /* CMDDATA_CMDDATA_C_H */
