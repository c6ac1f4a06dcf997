/* What a plug-in of the Librarian exports: one C function that returns a record.

   A plug-in knows the messages of one maker or instrument and says what they are; it may also bring
   an editor for them. It is a shared object in the PlugIns folder of the bundle. Without an editor it
   needs this header and nothing else; the windows of an editor are the library's. */
#ifndef LIBRARIAN_PLUGIN_H
#define LIBRARIAN_PLUGIN_H

#include <stddef.h>

/* The version of a record that describes messages, of one that has an editor behind that, and of one
   that names the voices inside of a message. */
#define LIBRARIAN_PLUGIN_VERSION 1u
#define LIBRARIAN_EDITOR_VERSION 2u
#define LIBRARIAN_VOICES_VERSION 3u

/* Texts end with a zero; they are ASCII. */
typedef struct LibrarianMessageText {
    char kind[64];
    char patch[64];
} LibrarianMessageText;

typedef struct LibrarianPluginRecord {
    unsigned int version; /* which record this is; looked at before anything else */
    const char* name;     /* what the user sees */
    /* Describes a System Exclusive message, from 0xF0 to 0xF7. Returns 1 when the plug-in knows it
       and has filled `text` (all zeros before), else 0. Called on the main thread. Null in a record
       with an editor that describes nothing. */
    int (*describe)(const unsigned char* message, size_t size, LibrarianMessageText* text);
} LibrarianPluginRecord;

/* What the program does for an editor. It lives as long as the editor; main thread only. */
typedef struct LibrarianHost {
    void* context; /* the first argument of every function */
    /* 1: the message is on its way; 0: busy, ask again later; -1: there is no output. */
    int (*send)(void* context, const unsigned char* message, size_t size);
    /* Puts a message into the bank in the place of the one that is shown, as an unsaved change. */
    int (*store)(void* context, const unsigned char* message,
                 size_t size); /* 1, or 0: it is gone */
    /* The user wants the editor closed. It is destroyed inside of this call. */
    void (*close)(void* context);
} LibrarianHost;

/* An editor for the messages that the plug-in knows; one at a time. Main thread only, and no
   exception may come out. */
typedef struct LibrarianEditor {
    int height; /* pixels that it needs, with a font of 14; its width is the window's */
    int (*canEdit)(const unsigned char* message, size_t size); /* 1 or 0 */
    /* Makes the editor inside `window`, a window handle (HWND) of the library; null on failure. */
    void* (*create)(void* window, const LibrarianHost* host);
    void (*resize)(void* editor, int width, int height);
    void (*show)(void* editor, const unsigned char* message, size_t size);
    /* Before another message is shown or the editor ends: asks the user what to do with changes that
       were not stored. 0: the user wants to stay, else 1. */
    int (*leave)(void* editor);
    void (*destroy)(void* editor);
} LibrarianEditor;

/* A record of version 2. */
typedef struct LibrarianEditorRecord {
    LibrarianPluginRecord plugin;
    const LibrarianEditor* editor; /* every function is there */
} LibrarianEditorRecord;

/* A record of version 3; it describes messages, too. */
typedef struct LibrarianVoicesRecord {
    LibrarianPluginRecord plugin;
    /* Puts the name of a voice into `text->patch` (zeros before): 1, or 0 behind the last one and for a
       message that is not a bank of several. Main thread only. */
    int (*voice)(const unsigned char* message, size_t size, size_t index,
                 LibrarianMessageText* text);
} LibrarianVoicesRecord;

/* The exported function. The record lives as long as the process. */
#define LIBRARIAN_PLUGIN_ENTRY "LibrarianPlugin"
typedef const LibrarianPluginRecord* (*LibrarianPluginEntry)(void);

#ifdef __cplusplus
#define LIBRARIAN_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#else
#define LIBRARIAN_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

#endif
