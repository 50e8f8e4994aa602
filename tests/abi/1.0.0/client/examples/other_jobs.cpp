#include "examples/other_jobs.h"

void defineRestore(BKQRestoreJob& job, Keeper& keeper) {
  job.setOwner("operator");
  job.setHost("backup1");
  job.setComments("March ledgers back to the standby machine");
  job.setSessionPassword("s3ss10n");

  auto& source = keeper.make<BKQTapeNode>("library1");
  auto& wanted = keeper.make<BKQTape>("DAILY", "NIGHT-01");
  wanted.setSessionNumber(17);
  wanted.setTapeSeq(1);
  wanted.setQFABlockNumber(4096);
  auto& item = keeper.make<BKQTapeItem>(7, static_cast<unsigned short>(512));
  item.setFileOrDir("/home/ledgers");
  wanted.addTapeItem(item);
  source.addTape(wanted);
  auto& other = keeper.make<BKQTape>("DAILY", "NIGHT-02");
  other.setSessionNumber(18);
  other.setTapeSeq(2);
  source.addTape(other);
  job.addSourceNode(source);

  auto& machine = keeper.make<BKQRestoreNode>("standby", "/home");
  machine.setActualNodeType(BKQNode::UnixNode);
  machine.setDestinationDir("/restored");
  machine.setUserName("root");
  machine.setPassword("st4ndby");
  job.addDestNode(machine);

  auto& database = keeper.make<BKQDBRestoreNode>("dbserver", "accounts");
  database.setActualNodeType(BKQNode::SybaseNode);
  database.setFStype(static_cast<BKQDisk::BKQDiskType>(31));
  database.setDBuser("sa", "syb4se");
  database.setOptions(1);
  job.addDestNode(database);

  job.addFilter(keeper.make<BKQFileFilter>(BKQFilter::Include, "*.db"));
  job.addFilter(keeper.make<BKQDirFilter>(BKQFilter::Exclude, "/home/ledgers/old"));
}

void defineMerge(BKQMergeJob& job, Keeper& keeper) {
  job.setOwner("operator");
  job.setHost("backup1");
  job.setMergeRange(17, 18);
  job.setMergeFilter("17-18");

  auto* source = new BKQTapeNode("library1");
  auto& tape = keeper.make<BKQTape>("DAILY", "NIGHT-01");
  tape.setTapeID(0x12345);
  tape.setSessionNumber(17);
  source->addTape(tape);
  job.setSource(*source);

  auto* destination = new BKQWinNTNode("catalog");
  auto& disk = keeper.make<BKQDisk>();
  disk.setDiskName("C:");
  destination->addDisk(disk);
  job.setDestination(*destination);
}
