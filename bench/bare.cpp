#include "bench/bare.h"

#include <bkoq/bkoq.h>

#include <cstdlib>
#include <cstring>
#include <initializer_list>

namespace bkoq::bench {
namespace {

constexpr std::size_t kBeforeText = 8;  // holders and length

struct List {
  void** elements;
  std::uint32_t entries;
  std::uint32_t capacity;
};

void add(List& list, void* element) {
  if (list.entries == list.capacity) {
    list.capacity = list.capacity == 0 ? 4 : list.capacity * 2;
    list.elements = static_cast<void**>(std::realloc(list.elements, list.capacity * sizeof(void*)));
  }
  list.elements[list.entries++] = element;
}

// Every object has its texts first and its lists after them.
template <std::size_t texts>
struct Leaf {
  char* text[texts];
};
template <std::size_t texts, std::size_t lists>
struct Bare {
  char* text[texts];
  List list[lists];
};
using BareString = Leaf<1>;
using BareFilter = Leaf<1>;
using BareTapeItem = Leaf<1>;
using BareItem = Bare<1, 1>;
using BareDisk = Bare<5, 2>;
using BareNode = Bare<8, 2>;
using BareTape = Bare<5, 2>;
using BareTapeNode = Bare<1, 1>;
using BareJob = Bare<7, 3>;

// A block as large as an object of the library.
template <class Object, class Shape>
Shape& make() {
  constexpr std::size_t kSize = sizeof(Object) > sizeof(Shape) ? sizeof(Object) : sizeof(Shape);
  void* block = std::malloc(kSize);
  std::memset(block, 0, kSize);
  return *static_cast<Shape*>(block);
}

void set(char* (&texts)[1], const std::string& text) {
  if (text.empty()) return;
  char* block = static_cast<char*>(std::malloc(kBeforeText + text.size() + 1));
  std::memset(block, 0, kBeforeText);
  std::memcpy(block + kBeforeText, text.c_str(), text.size() + 1);
  texts[0] = block;
}
template <std::size_t count>
void set(char* (&texts)[count], std::initializer_list<const std::string*> all) {
  std::size_t i = 0;
  for (const std::string* text : all) {
    char* one[1] = {nullptr};
    set(one, *text);
    texts[i++] = one[0];
  }
}

void* makeFilter(const Filter& content) {
  auto& filter = make<BKQFileFilter, BareFilter>();
  set(filter.text, content.pattern);
  return &filter;
}
void addFilters(List& list, const std::vector<Filter>& filters) {
  for (const Filter& filter : filters) add(list, makeFilter(filter));
}

void* makeItem(const DiskItem& content) {
  auto& item = make<BKQDiskItem, BareItem>();
  set(item.text, content.path);
  for (const std::string& file : content.files) {
    auto& name = make<RWCollectableString, BareString>();
    set(name.text, file);
    add(item.list[0], &name);
  }
  return &item;
}

void* makeDisk(const Disk& content) {
  auto& disk = make<BKQDisk, BareDisk>();
  set(disk.text, {&content.name, &content.password, &content.user, &content.password2,
                  &content.encryptionKey});
  for (const DiskItem& item : content.items) add(disk.list[0], makeItem(item));
  addFilters(disk.list[1], content.filters);
  return &disk;
}

void* makeNode(const Node& content) {
  auto& node = make<BKQUnixNode, BareNode>();
  set(node.text, {&content.name, &content.osVersion, &content.domain, &content.address,
                  &content.user, &content.password, &content.beforeNode, &content.afterNode});
  for (const Disk& disk : content.disks) add(node.list[0], makeDisk(disk));
  addFilters(node.list[1], content.filters);
  return &node;
}

void* makeTape(const Tape& content) {
  auto& tape = make<BKQTape, BareTape>();
  set(tape.text, {&content.deviceGroup, &content.name, &content.sessionPassword, &content.path,
                  &content.location});
  for (const TapeItem& itemContent : content.items) {
    auto& item = make<BKQTapeItem, BareTapeItem>();
    set(item.text, itemContent.fileOrDir);
    add(tape.list[0], &item);
  }
  addFilters(tape.list[1], content.filters);
  return &tape;
}

template <std::size_t count>
void freeTexts(char* const (&texts)[count]) {
  for (char* text : texts) std::free(text);
}
template <class Free>
void freeList(const List& list, const Free& freeElement) {
  for (std::uint32_t i = 0; i < list.entries; ++i) freeElement(list.elements[i]);
  std::free(list.elements);
}

void freeLeaf(void* leaf) {
  freeTexts(static_cast<Leaf<1>*>(leaf)->text);
  std::free(leaf);
}
void freeItem(void* block) {
  const auto& item = *static_cast<BareItem*>(block);
  freeTexts(item.text);
  freeList(item.list[0], freeLeaf);
  std::free(block);
}
void freeDisk(void* block) {
  const auto& disk = *static_cast<BareDisk*>(block);
  freeTexts(disk.text);
  freeList(disk.list[0], freeItem);
  freeList(disk.list[1], freeLeaf);
  std::free(block);
}
void freeNode(void* block) {
  const auto& node = *static_cast<BareNode*>(block);
  freeTexts(node.text);
  freeList(node.list[0], freeDisk);
  freeList(node.list[1], freeLeaf);
  std::free(block);
}
void freeTape(void* block) {
  const auto& tape = *static_cast<BareTape*>(block);
  freeTexts(tape.text);
  freeList(tape.list[0], freeLeaf);
  freeList(tape.list[1], freeLeaf);
  std::free(block);
}
void freeTapeNode(void* block) {
  const auto& node = *static_cast<BareTapeNode*>(block);
  freeTexts(node.text);
  freeList(node.list[0], freeTape);
  std::free(block);
}

}  // namespace

BareModel::BareModel(const Job& content) {
  auto& job = make<BKQBackupJob, BareJob>();
  job_ = &job;
  set(job.text, {&content.owner, &content.host, &content.reportFile, &content.comments,
                 &content.beforeJob, &content.afterJob});
  for (const Node& node : content.nodes) add(job.list[0], makeNode(node));
  auto& destination = make<BKQTapeNode, BareTapeNode>();
  set(destination.text, content.destination);
  for (const Tape& tape : content.tapes) add(destination.list[0], makeTape(tape));
  add(job.list[1], &destination);
  addFilters(job.list[2], content.filters);
}

BareModel::~BareModel() {
  const auto& job = *static_cast<BareJob*>(job_);
  freeTexts(job.text);
  freeList(job.list[0], freeNode);
  freeList(job.list[1], freeTapeNode);
  freeList(job.list[2], freeLeaf);
  std::free(job_);
}

}  // namespace bkoq::bench
