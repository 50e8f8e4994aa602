#ifndef BKOQ_KIT_H_
#define BKOQ_KIT_H_

/* The record kit, libbkoqkit: what a program needs that holds a record tree. Every operation reads
   records of either layout and is told which; none needs the library that made them. Nothing
   throws, no state is kept between calls. Usable from C99 and C++11.

   Blocks of a tree are numbered in the order in which bkoqWalk() reaches them: #1 is the job
   record, then each block where the pointer to it is. The numbers depend on the tree's content
   alone, so two runs print the same text; addresses are never printed. */

#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#include "bkoq/codes.h"
#include "bkoq/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The layout of a tree: BKQJDATATRANSFER or BKQJDATATRANSFER_OLD. */
typedef enum BkoqLayout {
  BKOQ_LAYOUT_CURRENT = 0,
  BKOQ_LAYOUT_PREVIOUS = 1,
  BKOQ_LAYOUT_WIDEST = 0x7FFFFFFF /**< no layout: lets a wrong value be passed and refused */
} BkoqLayout;

/** How an operation ended. */
typedef enum BkoqStatus {
  BKOQ_OK = 0,
  BKOQ_STOPPED,      /**< the visitor asked to stop */
  BKOQ_SINK_FAILED,  /**< the sink refused output */
  BKOQ_NO_MEMORY,    /**< memory ran out */
  BKOQ_BAD_ARGUMENT, /**< a null where none may be, or an unknown layout or format */
  BKOQ_NOT_FOUND,    /**< no such record, path, block or offset */
  BKOQ_BAD_IMAGE,    /**< an image that breaks a rule of its format */
  BKOQ_BAD_TREE,     /**< a tree that no image can hold */
  BKOQ_OTHER_LAYOUT  /**< a tree that looks like one of the other layout */
} BkoqStatus;

/** What a status means, in words such as "memory ran out"; never null. */
BKOQ_API const char* bkoqStatusText(BkoqStatus status);

/** Whether a tree may be of this layout: BKOQ_OTHER_LAYOUT when it has something where this layout
    has reserved bytes and the other one a field. BKOQ_OK is no proof: most trees fit both. */
BKOQ_API BkoqStatus bkoqCheckLayout(const void* root, BkoqLayout layout);

/* ------------------------------------------------------------------------------------ free */

/** What bkoqFree() released. */
typedef struct BkoqFreed {
  uint32_t blocks;   /**< blocks given to free() */
  uint64_t bytes;    /**< their bytes, as far as records and texts take them */
  uint32_t notFreed; /**< blocks left: what they hold cannot be told from the records */
} BkoqFreed;

/** Frees a tree from convertToBK2() or convertToBK2_old(), also one that a failed conversion left:
    a count over a null array stands for no elements. A null `root` is no tree. What a node of an
    unknown kind of job holds (pMedia) is left and counted, since nothing says what it is. `freed`
    may be null. Allocates nothing. Where the tree looks like one of the other layout, all that this
    layout knows is freed, what only the other one knows is left and counted, and the result is
    BKOQ_OTHER_LAYOUT; ask bkoqCheckLayout() before where the layout is not certain. */
BKOQ_API BkoqStatus bkoqFree(void* root, BkoqLayout layout, BkoqFreed* freed);

/* ------------------------------------------------------------------------------------ walk */

/** What a field is. */
typedef enum BkoqFieldKind {
  BKOQ_FIELD_NUMBER = 0,
  BKOQ_FIELD_COUNT,       /**< counts the elements of an array, or the texts of a list */
  BKOQ_FIELD_FLAGS,       /**< a number whose bits have meanings of their own */
  BKOQ_FIELD_TIME,        /**< signed, local-clock seconds since 1970-01-01 00:00 */
  BKOQ_FIELD_CLIENT_TIME, /**< signed, seconds as the client gave them */
  BKOQ_FIELD_BYTE_LIST,   /**< one number a byte */
  BKOQ_FIELD_TEXT,        /**< pointer to a text */
  BKOQ_FIELD_TWO_TEXTS,   /**< pointer to two texts in one block, each with its NUL */
  BKOQ_FIELD_TEXT_LIST,   /**< pointer to `count` texts back to back */
  BKOQ_FIELD_ARRAY,       /**< pointer to `count` records */
  BKOQ_FIELD_RECORD,      /**< pointer to one record */
  BKOQ_FIELD_EMBEDDED,    /**< a record inside this one */
  BKOQ_FIELD_RESERVED,    /**< zero */
  BKOQ_FIELD_OPAQUE       /**< unknown, perhaps a pointer: the kind that would tell is not known */
} BkoqFieldKind;

/** What a step of a walk is. */
typedef enum BkoqEvent {
  BKOQ_RECORD_BEGIN = 0, /**< a record; its fields follow */
  BKOQ_FIELD,            /**< a field; what it points to or embeds follows */
  BKOQ_RECORD_END        /**< all of the record has been visited */
} BkoqEvent;

/** One step of a walk. Everything it points to lives as long as the call of the visitor; names,
    meanings and what lies in the tree live on. */
typedef struct BkoqVisit {
  BkoqEvent event;         /**< what this step is */
  const char* path;        /**< "pSourceNodes[2].pMedia[0].pszDiskName"; "" for the job record */
  const char* record;      /**< name of the record, "BKDDISK" */
  uint32_t block;          /**< number of the block in which the record or field lies */
  uint32_t offset;         /**< its place in that block */
  uint32_t width;          /**< bytes of the record or field */
  const void* bytes;       /**< the record or field itself */
  unsigned int depth;      /**< records around it: 0 for the job record and its fields */
  const char* field;       /**< name of the field; null for records, as is all that follows */
  BkoqFieldKind kind;      /**< what the field is */
  uint32_t fieldOffset;    /**< place in the record */
  const char* meaning;     /**< in a few words */
  const char* filledBy;    /**< "BKQJob::setOwner"; "" when no attribute fills it */
  int isSecret;            /**< a password or key, wholly or in part */
  uint32_t number;         /**< numbers, counts, flags, times (as unsigned) */
  const char* word;        /**< what the number is called, "rotation backup"; null without a name */
  uint32_t target;         /**< number of the block it points to; 0 for null and for no pointer */
  const void* targetBytes; /**< that block */
  uint32_t targetSize;     /**< its bytes, as far as records and texts take them */
  uint32_t count;          /**< arrays and lists: elements in that block */
} BkoqVisit;

/** Returns 0 to go on, anything else to stop. */
typedef int (*BkoqVisitor)(const BkoqVisit* visit, void* user);

/** Visits every record and field: the fields of a record in the order of their offsets, and after
    a field what it points to or embeds. Allocates nothing and changes nothing. */
BKOQ_API BkoqStatus bkoqWalk(const void* root, BkoqLayout layout, BkoqVisitor visitor, void* user);

/* ------------------------------------------------------------------------------------- get */

/** What is at a path. All that it points to lies in the tree, or lives on. */
typedef struct BkoqValue {
  BkoqFieldKind kind;  /**< BKOQ_FIELD_RECORD for a record; BKOQ_FIELD_TEXT for a text of a list */
  const char* record;  /**< the record in which the field lies, or the record itself: "BKDDISK" */
  const void* bytes;   /**< the field, the record, or the text */
  uint32_t width;      /**< its bytes; of a text without its NUL */
  uint32_t number;     /**< numbers, counts, flags, times (as unsigned) */
  const char* word;    /**< what the number is called; null without a name */
  const char* text;    /**< a text, or the first of several; null without one */
  const void* target;  /**< the block that the field points to; null for null and for no pointer */
  uint32_t targetSize; /**< its bytes, as far as records and texts take them */
  uint32_t count;      /**< arrays and lists: elements in that block */
  int isSecret;        /**< a password or key, wholly or in part */
} BkoqValue;

/** Gets what is at a path as bkoqWalk() gives it; "" is the job record. The texts of a list have
    paths here too: "pFileList[2]". BKOQ_NOT_FOUND when there is no such path. Allocates nothing. */
BKOQ_API BkoqStatus bkoqGet(const void* root, BkoqLayout layout, const char* path,
                            BkoqValue* value);

/** Says in `text`, which takes `size` bytes, why a path leads nowhere: which part of it fails, and
    what is there ("pSourceNodes has 4 elements"). BKOQ_OK, and an empty text, when it leads
    somewhere. */
BKOQ_API BkoqStatus bkoqExplainPath(const void* root, BkoqLayout layout, const char* path,
                                    char* text, size_t size);

/** The record of the layout whose name is nearest to this one; null when none is near. */
BKOQ_API const char* bkoqNearestRecord(const char* name, BkoqLayout layout);

/* ----------------------------------------------------------------------------------- print */

/** Takes `size` bytes of output; returns 0, or anything else to end the operation. */
typedef int (*BkoqSink)(void* user, const char* text, size_t size);

/** A sink for a FILE*, which is its `user`. Fails when writing fails; flushing is the caller's. */
BKOQ_API int bkoqFileSink(void* file, const char* text, size_t size);

/** For whom something is printed. */
typedef enum BkoqFormat {
  BKOQ_FORMAT_TEXT = 0,           /**< for people */
  BKOQ_FORMAT_JSON,               /**< for programs: strict JSON, with a format version */
  BKOQ_FORMAT_ANNOTATED,          /**< bkoqPrint(): every byte of every block, block by block */
  BKOQ_FORMAT_MARKDOWN,           /**< bkoqPrintRecords(): tables for a page */
  BKOQ_FORMAT_C,                  /**< bkoqPrintRecords(): plain C structs */
  BKOQ_FORMAT_MAGIC,              /**< bkoqPrintRecords(): an entry for file(1) */
  BKOQ_FORMAT_KAITAI,             /**< bkoqPrintRecords(): a Kaitai Struct description */
  BKOQ_FORMAT_PLAIN_JSON,         /**< trees: JSON with the values alone */
  BKOQ_FORMAT_WIDEST = 0x7FFFFFFF /**< no format */
} BkoqFormat;

/** How to print; all zero is the default. */
typedef struct BkoqPrintOptions {
  BkoqFormat format;      /**< for people or for programs */
  int showSecrets;        /**< print passwords and keys; masked otherwise */
  int hideReserved;       /**< leave out reserved bytes that are zero */
  int hideZero;           /**< leave out fields that are zero or null, reserved ones too */
  int colour;             /**< text: terminal colours */
  unsigned int depth;     /**< text, JSON: levels of records shown, 1 is the job alone; 0 all */
  unsigned int width;     /**< text: columns, at least 40; 0 for as many as a line takes */
  const char* onlyRecord; /**< print only records of this name, "BKNODE"; null for all */
} BkoqPrintOptions;

/** Where the blocks of a tree are in its image; all zero is the default. */
typedef struct BkoqImagePlaces {
  const void* image; /**< the image in which the tree lies: bkoqUseImage(), bkoqSalvageImage() */
  uint32_t doubtfulFrom; /**< the block from which on all is marked as doubtful; 0 for none */
} BkoqImagePlaces;

/* A path may be a pattern: "*" stands for any characters of one name or index, "**" for anything,
   so "pSourceNodes[*].pMedia[*].pszDiskName", "stFax.*", "**.pszPassword". */

/** Prints a tree. `options` may be null. BKOQ_NOT_FOUND when the layout has no such record as
    `onlyRecord` names, or the tree holds none. A tree that looks like one of the other layout is
    printed after a line, in JSON a member, that says so. What is printed goes to the sink piece by
    piece; memory for more than a piece is never needed. */
BKOQ_API BkoqStatus bkoqPrint(const void* root, BkoqLayout layout, const BkoqPrintOptions* options,
                              BkoqSink sink, void* user);

/** Prints what is at a path as bkoqWalk() gives it: of a field its value alone, of an array or a
    record everything in it; of a pattern all that it is about, each with its path. Of the options,
    those of bkoqPrint() that concern values hold, but a field whose own path is given is
    shown if it is zero, too; the formats are text and both of JSON. */
BKOQ_API BkoqStatus bkoqPrintField(const void* root, BkoqLayout layout, const char* path,
                                   const BkoqPrintOptions* options, BkoqSink sink, void* user);

/** Says which field, or which text, lies at byte `offset` of the block numbered `block`. The
   formats are text and JSON. */
BKOQ_API BkoqStatus bkoqPrintAt(const void* root, BkoqLayout layout, uint32_t block,
                                uint32_t offset, const BkoqPrintOptions* options, BkoqSink sink,
                                void* user);

/** Prints a tree of an image as bkoqPrint() does, or with a `path` as bkoqPrintField() does: the
    annotated format tells where in the image each block is, and what is doubtful is marked. After
    the first masked text no place is told, since that would tell its length. */
BKOQ_API BkoqStatus bkoqPrintImage(const void* root, BkoqLayout layout, const char* path,
                                   const BkoqPrintOptions* options, const BkoqImagePlaces* places,
                                   BkoqSink sink, void* user);

/** Says what lies at byte `offset` of the image: a field, a text, a number of the header, or the
    padding after a block. Of a byte after the first masked text only that is told. The formats are
    text and JSON. */
BKOQ_API BkoqStatus bkoqPrintAtFile(const void* root, BkoqLayout layout, uint32_t offset,
                                    const BkoqPrintOptions* options, const BkoqImagePlaces* places,
                                    BkoqSink sink, void* user);

/* --------------------------------------------------------------------------------- compare */

/** What a difference is. */
typedef enum BkoqChange {
  BKOQ_CHANGED = 0, /**< a field, or what it points to */
  BKOQ_ADDED,       /**< an element that only the second tree has */
  BKOQ_REMOVED,     /**< an element that only the first tree has */
  BKOQ_MOVED        /**< an element that both have, in another order among those that both have */
} BkoqChange;

/** One difference between two trees. Lives as long as the call of the visitor. Of a value of more
   than 1 MiB there is the beginning, with "..." after it. */
typedef struct BkoqDifference {
  const char* path;      /**< in the first tree */
  const char* otherPath; /**< in the second; the same unless the field is called otherwise there */
  const char* record;    /**< the record of the field, in the first tree; an element's own */
  uint32_t offset;       /**< of the field in its record; of an element in its array's block */
  const char* oldValue;  /**< in the first tree, in words; "absent" for an element it lacks */
  const char* newValue;  /**< in the second */
  int isMasked;          /**< a secret is masked in one of the values */
} BkoqDifference;

/** Returns 0 to go on, anything else to stop. */
typedef int (*BkoqDifferenceVisitor)(const BkoqDifference* difference, void* user);

/** Compares two trees, of the same layout or not, field by field in the order of bkoqWalk(). Fields
    of different layouts are compared by the bytes at which they are: what one layout has and the
    other has not differs when it is not zero, and so do reserved bytes. An array that only one tree
    has is one difference. The elements of an array that both have are aligned first, by what tells
    one from another: the name of a node, disk or tape, the path of an item, all of a filter. So an
    element that only one tree has is one difference, and so is one that has moved; what changed in
    those that both have follows, with the path in either tree. The count of such an array is no
    difference of its own. `visitor` and `count` may be null; `count` takes the number of
    differences. Secrets are masked unless `showSecrets`. */
BKOQ_API BkoqStatus bkoqCompare(const void* first, BkoqLayout firstLayout, const void* second,
                                BkoqLayout secondLayout, int showSecrets,
                                BkoqDifferenceVisitor visitor, void* user, uint32_t* count);

/** Which differences are wanted; all zero is the default. */
typedef struct BkoqPaths {
  const char* const* only;    /**< only those at these paths or patterns; ends with null */
  const char* const* ignored; /**< none of those at these; ends with null */
} BkoqPaths;

/** Returns 0 to go on, anything else to stop. */
typedef int (*BkoqChangeVisitor)(const BkoqDifference* difference, BkoqChange change, void* user);

/** bkoqCompare() with what each difference is, and with the wanted ones alone. `paths` may be null.
 */
BKOQ_API BkoqStatus bkoqCompareChanges(const void* first, BkoqLayout firstLayout,
                                       const void* second, BkoqLayout secondLayout, int showSecrets,
                                       const BkoqPaths* paths, BkoqChangeVisitor visitor,
                                       void* user, uint32_t* count);

/** Prints the differences, one a line; nothing for equal trees, in JSON an empty list. */
BKOQ_API BkoqStatus bkoqPrintDifferences(const void* first, BkoqLayout firstLayout,
                                         const void* second, BkoqLayout secondLayout,
                                         const BkoqPrintOptions* options, BkoqSink sink, void* user,
                                         uint32_t* count);

/** The same for the wanted differences alone; `paths` may be null. */
BKOQ_API BkoqStatus bkoqPrintChanges(const void* first, BkoqLayout firstLayout, const void* second,
                                     BkoqLayout secondLayout, const BkoqPrintOptions* options,
                                     const BkoqPaths* paths, BkoqSink sink, void* user,
                                     uint32_t* count);

/* ----------------------------------------------------------------------------------- image */

/* An image is a tree as one block without addresses, to store or to send; docs/image-format.md
   describes it. It holds passwords as they are. */

/** What every image begins with, and the version of the format that is written and read. */
#define BKOQ_IMAGE_SIGNATURE "BKQIMAGE"
/** Goes up with every change of the format. */
#define BKOQ_IMAGE_FORMAT_VERSION 1

/** What can be wrong with an image. */
typedef enum BkoqImageProblem {
  BKOQ_IMAGE_GOOD = 0,
  BKOQ_IMAGE_SHORT,        /**< shorter than the header */
  BKOQ_IMAGE_MAGIC,        /**< does not begin as an image does */
  BKOQ_IMAGE_VERSION,      /**< a version of the format that this kit does not read */
  BKOQ_IMAGE_LAYOUT,       /**< neither of the two layouts */
  BKOQ_IMAGE_SIZE,         /**< the size in the header is not that of the image */
  BKOQ_IMAGE_CHECKSUM,     /**< the bytes are not those that were written */
  BKOQ_IMAGE_ROOT,         /**< the job record is not where it must be */
  BKOQ_IMAGE_OUTSIDE,      /**< an offset points into the header or beyond the end */
  BKOQ_IMAGE_UNALIGNED,    /**< an offset is not a multiple of 4 */
  BKOQ_IMAGE_OVERLAP,      /**< a block lies over one before it */
  BKOQ_IMAGE_GAP,          /**< a block does not follow the one before it */
  BKOQ_IMAGE_COUNT,        /**< an array is longer than the rest of the image */
  BKOQ_IMAGE_UNTERMINATED, /**< a text runs to the end of the image */
  BKOQ_IMAGE_PADDING,      /**< a byte between two blocks is not zero */
  BKOQ_IMAGE_TRAILING,     /**< bytes after the last block */
  BKOQ_IMAGE_BLOCKS,       /**< not as many blocks as the header says */
  BKOQ_IMAGE_UNKNOWN_MEDIA /**< a node holds something, but the kind of the job is unknown */
} BkoqImageProblem;

/** What is wrong, and where. */
typedef struct BkoqImageError {
  BkoqImageProblem problem; /**< what is wrong */
  char path[160];           /**< the field or record in question; "" for the image as a whole */
  uint32_t position;        /**< the byte of the image at which it is */
  char expected[80];        /**< what should be there */
  char found[80];           /**< what is there */
  char
      text[400]; /**< all of it for a user, as a line without its end: "cut short by 1,020 bytes" */
} BkoqImageError;

/** Gives the image of a tree to the sink, in one call. BKOQ_BAD_TREE when a node holds something
    that cannot be told; `error`, which may be null, then says which. */
BKOQ_API BkoqStatus bkoqWriteImage(const void* root, BkoqLayout layout, BkoqSink sink, void* user,
                                   BkoqImageError* error);

/** Makes a tree from an image, which may come from anyone: everything in it is checked before it is
    used, and nothing outside its `size` bytes is touched. The tree is the caller's, as one from a
    conversion is; bkoqFree() frees it. With BKOQ_BAD_IMAGE, `root` is what could be read up to the
    error, null if nothing, which bkoqFree() and all others take as well; `layout` is set whenever
    `root` is not null. `error` may be null. */
BKOQ_API BkoqStatus bkoqReadImage(const void* image, size_t size, BkoqLayout* layout, void** root,
                                  BkoqImageError* error);

/** Makes a tree of an image in its own bytes: `image` must begin at a multiple of 4 and is changed,
    as it is checked, into the blocks of the tree. It needs no other memory, and the tree lives as
    long as the image does: bkoqFree() must not be given it. With BKOQ_BAD_IMAGE, `root` is null and
    the image is as it was. */
BKOQ_API BkoqStatus bkoqUseImage(void* image, size_t size, BkoqLayout* layout, void** root,
                                 BkoqImageError* error);

/** Told of each thing that is wrong with a salvaged image, and how it was read all the same. */
typedef void (*BkoqDoubtVisitor)(const BkoqImageError* error, void* user);

/** What came of salvaging. */
typedef struct BkoqSalvage {
  uint32_t blocks;       /**< that could be read, at least in part */
  uint32_t doubts;       /**< how often the visitor was called */
  uint32_t doubtfulFrom; /**< the first block that may not be what was written; 0 for none */
} BkoqSalvage;

/** So many bytes after a damaged image must be there, for what is cut off of it. */
#define BKOQ_SALVAGE_ROOM 512

/** Reads of a damaged image everything that can still be read, and nothing outside its `size`
    bytes: texts that are cut end where the image does, records that are cut end in zeros, arrays
    end with the last record of which there is something, blocks that are not where they must be are
    looked for where their offset says. As with bkoqUseImage() the tree lies in the image's own
    bytes, which must begin at a multiple of 4, and in the BKOQ_SALVAGE_ROOM bytes after them, which
    are written to; it lives as long as they do, and bkoqFree() must not be given it. `layout` is
    the one in which most can be read. BKOQ_BAD_IMAGE with a null `root` when not even a part of the
    job record is there. `visitor` and `salvage` may be null. */
BKOQ_API BkoqStatus bkoqSalvageImage(void* image, size_t size, BkoqLayout* layout, void** root,
                                     BkoqDoubtVisitor visitor, void* user, BkoqSalvage* salvage);

/* --------------------------------------------------------------------------------- records */

/** Prints the table of a record: its fields with offset, width, kind, meaning and the attribute
   that fills them. A null `record` stands for all. The formats are text, JSON, Markdown and C; and,
   for all records of both layouts only, descriptions of images: for file(1) and Kaitai Struct. */
BKOQ_API BkoqStatus bkoqPrintRecords(const char* record, BkoqLayout layout, BkoqFormat format,
                                     BkoqSink sink, void* user);

/** Prints what differs between the layouts in a record, or in all. The formats are text, JSON and
    Markdown. */
BKOQ_API BkoqStatus bkoqPrintLayoutDifferences(const char* record, BkoqFormat format, BkoqSink sink,
                                               void* user);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* BKOQ_KIT_H_ */
