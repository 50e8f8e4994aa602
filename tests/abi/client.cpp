// A client as one was written for 1.0.0: flattens its nightly backup, a restore and a merge in both
// layouts and writes an image of each tree, and what the state variables hold, to the folder that
// is given. Compiled with the headers of 1.0.0 as well, so it uses only what was there.

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>
#include <stdio.h>
#include <stdlib.h>

#include <string>

#include "examples/nightly_job.h"
#include "examples/other_jobs.h"

namespace {

std::string folder;

FILE* create(const char* name) {
  FILE* file = fopen((folder + "/" + name).c_str(), "wb");
  if (file != nullptr) return file;
  perror(name);
  exit(EXIT_FAILURE);
}

void finish(FILE* file, bool isGood) {
  if (fclose(file) == 0 && isGood) return;
  fputs("cannot write\n", stderr);
  exit(EXIT_FAILURE);
}

void keep(const char* name, int isConverted, void* record, BkoqLayout layout) {
  if (isConverted == 0) exit(EXIT_FAILURE);
  FILE* file = create(name);
  finish(file, bkoqWriteImage(record, layout, bkoqFileSink, file, nullptr) == BKOQ_OK);
  if (bkoqFree(record, layout, nullptr) != BKOQ_OK) exit(EXIT_FAILURE);
}

const char* shown(const char* text) { return text == nullptr ? "(none)" : text; }

void keepState() {
  FILE* file = create("state.txt");
  const unsigned int numbers[][9] = {
      {BK6_NEWTAPETIMEOUT, BK6_SPANTAPETIMEOUT, BK6_NEWTAPEMETHOD, BK6_SPANTAPEMETHOD,
       DISK_ENCRYPTION, DISK_COMPRESSION, NODE_NOESTIMATE, CURRENT_NODETYPE, UNIX_OPTIONS},
      {BK6_NEWTAPETIMEOUT_OLD, BK6_SPANTAPETIMEOUT_OLD, BK6_NEWTAPEMETHOD_OLD,
       BK6_SPANTAPEMETHOD_OLD, DISK_ENCRYPTION_OLD, DISK_COMPRESSION_OLD, NODE_NOESTIMATE_OLD,
       CURRENT_NODETYPE_OLD, UNIX_OPTIONS_OLD}};
  for (const auto& layout : numbers) {
    for (const unsigned int number : layout) fprintf(file, "%u ", number);
  }
  fprintf(file, "\n%s %s %s\n", shown(BK6_DISKSESSIONPW), shown(BK6_TAPESESSIONPW),
          DISK_DISKNAME.data());
  fprintf(file, "%s %s %s\n", shown(BK6_DISKSESSIONPW_OLD), shown(BK6_TAPESESSIONPW_OLD),
          DISK_DISKNAME_OLD.data());
  finish(file, ferror(file) == 0);
}

// A class of the client's own: the library calls back through slots that this file laid out.
class ForeignNode : public BKQUnixNode {
 public:
  ForeignNode() : BKQUnixNode("foreign") {}
  unsigned int nodeType() const override { return BKQNode::UnixNode; }
  virtual int ownSlot() const { return 7; }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  folder = argv[1];
  Keeper keeper;
  NightlyBackup nightly;
  BKQRestoreJob restore("restore ledgers");
  defineRestore(restore, keeper);
  BKQMergeJob merge;
  defineMerge(merge, keeper);
  BKQBackupJob backup("of a client's own class");
  ForeignNode& foreign = keeper.make<ForeignNode>();
  backup.addSourceNode(foreign);

  void* record = nullptr;
  int done = nightly.job().convertToBK2(record);
  keep("nightly.image", done, record, BKOQ_LAYOUT_CURRENT);
  done = nightly.job().convertToBK2_old(record);
  keep("nightly-previous.image", done, record, BKOQ_LAYOUT_PREVIOUS);
  keepState();
  done = restore.convertToBK2(record, "NIGHT-01", 17);
  keep("restore.image", done, record, BKOQ_LAYOUT_CURRENT);
  done = restore.convertToBK2_old(record, "NIGHT-01", 17);
  keep("restore-previous.image", done, record, BKOQ_LAYOUT_PREVIOUS);
  done = merge.convertToBK2(record);
  keep("merge.image", done, record, BKOQ_LAYOUT_CURRENT);
  done = merge.convertToBK2_old(record);
  keep("merge-previous.image", done, record, BKOQ_LAYOUT_PREVIOUS);
  done = backup.convertToBK2(record);
  keep("foreign.image", done, record, BKOQ_LAYOUT_CURRENT);

  // Types of the library are one with those that the client sees.
  const RWCollectable* object = &foreign;
  const bool isOne = dynamic_cast<const BKQUnixNode*>(object) == &foreign &&
                     dynamic_cast<const BKQTapeNode*>(object) == nullptr && foreign.ownSlot() == 7;
  return isOne ? EXIT_SUCCESS : EXIT_FAILURE;
}
