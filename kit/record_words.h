#ifndef BKOQ_KIT_RECORD_WORDS_H_
#define BKOQ_KIT_RECORD_WORDS_H_

#include <array>

#include "kit/record_table.h"

namespace bkoq::kit {

// What the codes and bits of the records are called.

inline constexpr JobKind kJobKinds[] = {
    {BKOQ_JOB_BACKUP, "backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {BKOQ_JOB_CRUISE_BACKUP, "cruise backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {BKOQ_JOB_CRUISE_MAKEUP, "cruise makeup", {Media::kDisks, false}, {Media::kTapes, false}},
    {BKOQ_JOB_RESTORE, "restore", {Media::kTapes, false}, {Media::kDisks, true}},
    {BKOQ_JOB_MERGE, "merge", {Media::kTapes, false}, {Media::kDisks, false}},
    {BKOQ_JOB_DATABASE_BACKUP, "database backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {BKOQ_JOB_DATABASE_RESTORE, "database restore", {Media::kTapes, false}, {Media::kDisks, true}},
    {BKOQ_JOB_COMPARE, "compare", {Media::kTapes, false}, {Media::kDisks, false}},
    {BKOQ_JOB_SCAN, "scan", {Media::kTapes, false}, {Media::kUnknown, false}},
    {BKOQ_JOB_ROTATION_BACKUP, "rotation backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {BKOQ_JOB_ROTATION_MAKEUP, "rotation makeup", {Media::kDisks, false}, {Media::kTapes, false}},
    {BKOQ_JOB_VERIFY, "verify", {Media::kTapes, false}, {Media::kUnknown, false}},
    {0, nullptr, {}, {}},
};

inline constexpr std::size_t kJobKindCount = sizeof kJobKinds / sizeof kJobKinds[0] - 1;

// The words of usJobType, the null name at the end included.
constexpr auto jobTypeWords() {
  std::array<Word, kJobKindCount + 1> words{};
  for (std::size_t i = 0; i < words.size(); ++i) words[i] = {kJobKinds[i].code, kJobKinds[i].name};
  return words;
}
inline constexpr auto kJobTypes = jobTypeWords();

inline constexpr Word kNodeTypes[] = {
    {BKOQ_NODE_MACINTOSH, "Macintosh"},
    {BKOQ_NODE_UNIX, "UNIX"},
    {BKOQ_NODE_NDS_PREVIOUS, "NDS"},
    {BKOQ_NODE_NETWARE, "NetWare"},
    {BKOQ_NODE_WINDOWS_NT, "Windows NT"},
    {BKOQ_NODE_OS2, "OS/2"},
    {BKOQ_NODE_WINDOWS_95, "Windows 95"},
    {BKOQ_NODE_WINDOWS, "Windows"},
    {BKOQ_NODE_NDS, "NDS"},
    {BKOQ_NODE_FTP, "FTP"},
    {BKOQ_NODE_SYBASE, "Sybase"},
    {BKOQ_NODE_ORACLE, "Oracle"},
    {BKOQ_NODE_INFORMIX, "Informix"},
    {BKOQ_NODE_TAPE_UNFINISHED, "tape node, unfinished"},
    {BKOQ_NODE_RESTORE_UNFINISHED, "restore node, unfinished"},
    {BKOQ_NODE_SNAPSHOT, "snapshot"},
    {BKOQ_NODE_DATABASE_RESTORE_UNFINISHED, "database restore node, unfinished"},
    {0, nullptr}};
inline constexpr Word kTapeNodeTypes[] = {{BKOQ_NODE_TAPE, "tape node"},
                                          {BKOQ_NODE_TAPE_UNFINISHED, "tape node, unfinished"},
                                          {0, nullptr}};
inline constexpr Word kNodeSystems[] = {{BKOQ_SYSTEM_OS2, "OS/2"},
                                        {BKOQ_SYSTEM_NETWARE, "NetWare"},
                                        {BKOQ_SYSTEM_WINDOWS, "Windows"},
                                        {BKOQ_SYSTEM_UNIX, "UNIX"},
                                        {BKOQ_SYSTEM_MAC, "Mac"},
                                        {BKOQ_SYSTEM_WINDOWS_NT, "Windows NT"},
                                        {0, nullptr}};
inline constexpr Word kFilterTypes[] = {
    {BKOQ_FILTER_VOLUME, "volume"},       {BKOQ_FILTER_FILE, "file"},
    {BKOQ_FILTER_DIRECTORY, "directory"}, {BKOQ_FILTER_TIME, "time"},
    {BKOQ_FILTER_ATTRIBUTE, "attribute"}, {0, nullptr}};
inline constexpr Word kInclExcl[] = {
    {BKOQ_MODE_INCLUDE, "include"}, {BKOQ_MODE_EXCLUDE, "exclude"}, {0, nullptr}};
inline constexpr Word kTimeRanges[] = {{BKOQ_RANGE_BEFORE, "before"},
                                       {BKOQ_RANGE_AFTER, "after"},
                                       {BKOQ_RANGE_BETWEEN, "between"},
                                       {BKOQ_RANGE_WITHIN, "within"},
                                       {0, nullptr}};

inline constexpr Word kJobOptions[] = {{BKOQ_JOB_NO_ESTIMATE, "no estimate"}, {0, nullptr}};
inline constexpr Word kNodeOptions[] = {
    {BKOQ_NODE_NO_ESTIMATE, "no estimate"},
    {BKOQ_NODE_TEXT_AFTER_NAME, "a text follows the name"},
    {BKOQ_NODE_TEXT_AFTER_VERSION, "a text follows the version"},
    {0, nullptr}};
inline constexpr Word kDiskOptions[] = {
    {BKOQ_DISK_COMPRESSION, "compression"}, {BKOQ_DISK_ENCRYPTION, "encryption"}, {0, nullptr}};
inline constexpr Word kTapeOptions[] = {{BKOQ_TAPE_EXTENSION, "extension"}, {0, nullptr}};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_RECORD_WORDS_H_
