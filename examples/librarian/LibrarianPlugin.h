/* What a plug-in of the Librarian exports: one C function that returns a record.

   A plug-in knows the messages of one maker or instrument and says what they are. It is a shared
   object in the PlugIns folder of the bundle; it needs this header and nothing else. */
#ifndef LIBRARIAN_PLUGIN_H
#define LIBRARIAN_PLUGIN_H

#include <stddef.h>

/* Changes with every change of the records below. */
#define LIBRARIAN_PLUGIN_VERSION 1u

/* Texts end with a zero; they are ASCII. */
typedef struct LibrarianMessageText {
    char kind[64];
    char patch[64];
} LibrarianMessageText;

typedef struct LibrarianPluginRecord {
    unsigned int version; /* LIBRARIAN_PLUGIN_VERSION; looked at before anything else */
    const char* name;     /* what the user sees */
    /* Describes a System Exclusive message, from 0xF0 to 0xF7. Returns 1 when the plug-in knows it
       and has filled `text` (all zeros before), else 0. Called on the main thread. */
    int (*describe)(const unsigned char* message, size_t size, LibrarianMessageText* text);
} LibrarianPluginRecord;

/* The exported function. The record lives as long as the process. */
#define LIBRARIAN_PLUGIN_ENTRY "LibrarianPlugin"
typedef const LibrarianPluginRecord* (*LibrarianPluginEntry)(void);

#ifdef __cplusplus
#define LIBRARIAN_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#else
#define LIBRARIAN_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

#endif
