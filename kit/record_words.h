#ifndef BKOQ_KIT_RECORD_WORDS_H_
#define BKOQ_KIT_RECORD_WORDS_H_

#include <array>

#include "kit/record_table.h"

namespace bkoq::kit {

// What the codes and bits of the records are called.

inline constexpr JobKind kJobKinds[] = {
    {1, "backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {3, "cruise backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {5, "cruise makeup", {Media::kDisks, false}, {Media::kTapes, false}},
    {7, "restore", {Media::kTapes, false}, {Media::kDisks, true}},
    {8, "merge", {Media::kTapes, false}, {Media::kDisks, false}},
    {9, "database backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {10, "database restore", {Media::kTapes, false}, {Media::kDisks, true}},
    {11, "compare", {Media::kTapes, false}, {Media::kDisks, false}},
    {14, "scan", {Media::kTapes, false}, {Media::kUnknown, false}},
    {20, "rotation backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {21, "rotation makeup", {Media::kDisks, false}, {Media::kTapes, false}},
    {29, "verify", {Media::kTapes, false}, {Media::kUnknown, false}},
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

inline constexpr Word kNodeTypes[] = {{2, "Macintosh"},
                                      {3, "UNIX"},
                                      {6, "NDS"},
                                      {8, "NetWare"},
                                      {9, "Windows NT"},
                                      {10, "OS/2"},
                                      {11, "Windows 95"},
                                      {12, "Windows"},
                                      {13, "NDS"},
                                      {20, "FTP"},
                                      {21, "Sybase"},
                                      {22, "Oracle"},
                                      {23, "Informix"},
                                      {24, "tape node, unfinished"},
                                      {25, "restore node, unfinished"},
                                      {26, "snapshot"},
                                      {27, "database restore node, unfinished"},
                                      {0, nullptr}};
inline constexpr Word kTapeNodeTypes[] = {
    {3, "tape node"}, {24, "tape node, unfinished"}, {0, nullptr}};
inline constexpr Word kNodeSystems[] = {{2, "OS/2"}, {4, "NetWare"},    {5, "Windows"}, {6, "UNIX"},
                                        {7, "Mac"},  {8, "Windows NT"}, {0, nullptr}};
inline constexpr Word kFilterTypes[] = {{1, "volume"}, {2, "file"},      {3, "directory"},
                                        {4, "time"},   {5, "attribute"}, {0, nullptr}};
inline constexpr Word kInclExcl[] = {{0, "include"}, {1, "exclude"}, {0, nullptr}};
inline constexpr Word kTimeRanges[] = {
    {0, "before"}, {1, "after"}, {2, "between"}, {3, "within"}, {0, nullptr}};

inline constexpr Word kJobOptions[] = {{0x00100000, "no estimate"}, {0, nullptr}};
inline constexpr Word kNodeOptions[] = {{0x40, "no estimate"},
                                        {0x200, "a text follows the name"},
                                        {0x800, "a text follows the version"},
                                        {0, nullptr}};
inline constexpr Word kDiskOptions[] = {
    {0x2000, "compression"}, {0x4000, "encryption"}, {0, nullptr}};
inline constexpr Word kTapeOptions[] = {{0x8000000, "extension"}, {0, nullptr}};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_RECORD_WORDS_H_
