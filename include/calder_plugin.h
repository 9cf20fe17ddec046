/* An import plug-in of Calder: a shared object that reads one kind of file and gives its points as codes.
 *
 * docs/plugins.md has a complete example, how to build and try one, and where it is put.
 *
 * A plug-in exports one function, calder_plugin_entry, which gives a table of calls. It runs in a process of its own:
 * whatever it does there, the editor and the waveform stay. That process runs for one import and is ended without a
 * further call when the user cancels, when a call neither returns nor reports progress for 30 seconds, or when more
 * than 2 GiB of address space are asked for.
 *
 * One import, in this order; every call comes from the same thread:
 *
 *     open     the file is looked at; settings are guessed
 *     options  only if the table has it: the settings, for the user to look at; then for each that the user changes
 *              set, and options again
 *     start    how many points there are
 *     seek     only if start gave a start_offset above 0
 *     read     again and again, 500 points a call
 *     report   only if the table has it: what the user should know of the points that were read
 *     close    also after a call that failed
 *
 * Texts are UTF-8 and end with a NUL. A text or array that a plug-in hands out stays the plug-in's and must stay valid
 * until the next call. Numbers have fixed sizes; all structures are laid out the same by every C and C++ compiler of a
 * platform. Each begins with its size as its maker knew it: later versions append fields, and a reader looks only at
 * fields that lie within both sizes.
 */
#ifndef CALDER_PLUGIN_H
#define CALDER_PLUGIN_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A plug-in whose table has another version is left out. */
#define CALDER_PLUGIN_VERSION 1u

/* Points a block: what one call of read delivers, but for the last. */
#define CALDER_PLUGIN_BLOCK 500

/* What calls return. Any other value counts as CALDER_PLUGIN_FAILED. */
#define CALDER_PLUGIN_OK 0
#define CALDER_PLUGIN_FAILED 1

#if defined(__GNUC__)
#define CALDER_PLUGIN_EXPORT __attribute__((visibility("default")))
#else
#define CALDER_PLUGIN_EXPORT
#endif

/* What the editor offers; valid as long as the plug-in is loaded. */
typedef struct calder_host {
  uint32_t size;
  uint32_t version;     /* CALDER_PLUGIN_VERSION of the editor */
  const char* language; /* of all texts: "en" or "ja" */
  /* Why the call that is about to fail does so: a sentence for the user, at most 1000 bytes of it. The text is copied.
   * Without one the user sees "Invalid file format." alone. */
  void (*reason)(const struct calder_host* host, const char* text);
  /* How far the present call is, 0 to 1. To be called at least every few seconds by calls that take longer: the time
   * limit counts from the last progress. */
  void (*progress)(const struct calder_host* host, double fraction);
} calder_host;

/* Kinds of options. */
#define CALDER_OPTION_CHOICE 1u /* one of several texts; its value is the text's place, from 0 */
#define CALDER_OPTION_NUMBER 2u /* a whole number */
#define CALDER_OPTION_TRUTH 3u  /* 0 or 1 */

/* A setting that the user may change before the file is read. */
typedef struct calder_option {
  uint32_t size;
  uint32_t kind;       /* CALDER_OPTION_... */
  const char* key;     /* what set is called with: letters of ASCII, the same in every language */
  const char* caption; /* one short line */
  const char* choices; /* of a choice: its texts, a line feed after each but the last; null otherwise */
  double minimum;      /* of a number, both inclusive, within -2147483648 to 2147483647 */
  double maximum;
  double value; /* as guessed, or as it was set */
} calder_option;

/* All settings, in the order in which they are shown. */
typedef struct calder_form {
  uint32_t size;
  uint32_t count;               /* of options, at most 32; 0: there is nothing to set, and nothing is asked */
  const calder_option* options; /* one after the other, each as long as the first one's size says */
  const char* preview;          /* what the settings make of the file's beginning, for a window with letters of equal
                                   width; at most 64 KiB of it are shown; null: none */
} calder_form;

/* What start finds out. */
typedef struct calder_import {
  uint32_t size;
  int32_t points;       /* 0 or more; 0: nothing is read, and the import succeeds */
  int32_t start_offset; /* bytes before the first point, not beyond the file's end; 0: read can begin without seek */
} calder_import;

/* The table. options, set and report may be null; set must be there when options is. */
typedef struct calder_plugin {
  uint32_t size;
  uint32_t version;         /* CALDER_PLUGIN_VERSION */
  const char* applications; /* the names that the editor may have, with blanks between them; Calder's is "4410" */
  const char* name;         /* shown in the list of file types: English, at most 63 bytes, without "|" */
  const char* name_ja;      /* the same in Japanese; null: the English one */
  const char* extension;    /* of the files: three letters or digits */

  /* Opens the file. *session: whatever the plug-in needs in the calls that follow; at first null. When open fails,
   * close is called if *session is not null. */
  int32_t (*open)(const calder_host* host, const char* path, void** session);
  /* form: with its size set, the rest zeros; to be filled. */
  int32_t (*options)(void* session, calder_form* form);
  /* The user's value of an option: within what options offered. A setting that was not set may be guessed anew. */
  int32_t (*set)(void* session, const char* key, double value);
  /* import: with its size set, the rest zeros; to be filled. Nothing is set any more after it. */
  int32_t (*start)(void* session, calder_import* import);
  int32_t (*seek)(void* session, int32_t start_offset);
  /* *count: on entry the room at codes, CALDER_PLUGIN_BLOCK points; on return how many points were stored: as many as
   * there is room for, fewer only at the end, and 0 after it. Together exactly as many as start said: anything else
   * fails the import. Full scale is -32767 to 32767. */
  int32_t (*read)(void* session, int16_t* codes, int32_t* count);
  /* Lines for the user; null or empty: none. At most 1 MiB of them is shown. */
  const char* (*report)(void* session);
  void (*close)(void* session);
} calder_plugin;

/* The one function that a plug-in exports; null: it cannot work here. Called once, before anything else; it must not
 * take longer than two seconds. */
CALDER_PLUGIN_EXPORT const calder_plugin* calder_plugin_entry(const calder_host* host);

#ifdef __cplusplus
}
#endif

#endif
