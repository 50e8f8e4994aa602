#include "examples/nightly_job.h"

namespace {

// 2004-03-01 21:00:00 UTC, in seconds since 1901.
constexpr unsigned long kMarchFirst = 3255627600UL;
constexpr unsigned long kHour = 3600;
constexpr unsigned long kDay = 24 * kHour;

constexpr BKQFilter::BKQInclExclType kExclude = BKQFilter::Exclude;
constexpr BKQFilter::BKQInclExclType kInclude = BKQFilter::Include;

}  // namespace

NightlyBackup::NightlyBackup()
    : printQueue_(new BKQPrintQueue),
      openFileInfo_(new BKQOpenFileInfo),
      job_(new BKQRotationBackupJob("nightly")) {
  BKQRotationBackupJob& job = *job_;
  job.setJobID(4711);
  job.setOwner("operator");
  job.setHost("backup1");
  job.setReportFile("/var/log/nightly.rpt");
  job.setComments("Nightly backup of the accounting machines");
  job.setBeforeJob("/usr/local/bin/quiesce");
  job.setAfterJob("/usr/local/bin/resume");
  job.setBeforeJobWait(30);
  job.setScriptType(2);
  job.setJobStatus(static_cast<BKQJob::BKQJobStatus>(0x00010002));
  job.setOptions(0x00100008);  // no estimate, and a bit of the server's
  job.setNewTapeTimeout(10);
  job.setSpanTapeTimeout(600);
  job.setTapeMethod(static_cast<BKQBackupJob::BKQTapeMethodType>(1));
  job.setSpanMethod(static_cast<BKQBackupJob::BKQSpanMethodType>(2));
  job.setSessionPassword("s3ss10n");
  job.setEncryptionOn();
  job.setCompressionOn();

  job.addSourceNode(defineUnixNode());
  job.addSourceNode(defineWindowsNode());
  job.addSourceNode(defineNDSNode());
  job.addSourceNode(defineDatabaseNode());
  job.setDestination(defineDestination());

  const auto modified = static_cast<BKQTimeFilter::BKQTimeAttrType>(1);
  const auto days = static_cast<BKQTimeFilter::BKQTimeUnitType>(3);
  job.addFilter(keeper_.make<BKQDirFilter>(kExclude, "/tmp"));
  job.addFilter(keeper_.make<BKQFileFilter>(kExclude, "*.o"));
  job.addFilter(keeper_.make<BKQWithinTimeFilter>(modified, 7, days));
  job.addFilter(keeper_.make<BKQBetweenTimeFilter>(
      modified, RWCollectableTime(kMarchFirst - 30 * kDay), RWCollectableTime(kMarchFirst)));

  attachSchedule();
  attachNotifications();
  openFileInfo_->setFActions(3);
  openFileInfo_->setFMethods(1);
  openFileInfo_->setRetryCount(4);
  openFileInfo_->setRetryInterval(15);
  job.setOpenFileInfo(*openFileInfo_);
}

NightlyBackup::~NightlyBackup() = default;

BKQUnixNode& NightlyBackup::defineUnixNode() {
  auto& node = keeper_.make<BKQUnixNode>("ledger");
  node.setNodeOSver("5.8");
  node.setNodeAddress("10.0.0.5");
  node.setNodeDomain("accounting");
  node.setUserName("root");
  node.setPassword("tr0ub4dor");
  node.setAfterNode("payroll");
  node.setBeforeNodeWait(5);
  node.setUnixOptions(0x10);

  auto& home = keeper_.make<BKQDisk>(static_cast<BKQDisk::BKQDiskType>(5));
  home.setDiskName("/home");
  home.setOptions(0x1);
  home.setUser("ops");
  home.setDiskPW2("0ps");
  auto& ledgers = keeper_.make<BKQDiskItem>("/ledgers");
  ledgers.addFile("2003.db");
  ledgers.addFile("2004.db");
  home.addDiskItem(ledgers);
  home.addDiskItem(keeper_.make<BKQDiskItem>(""));
  home.addFilter(keeper_.make<BKQVolumeFilter>(kInclude, "vol*"));
  home.addFilter(keeper_.make<BKQAttributeFilter>(kExclude, 0x80000001));
  node.addDisk(home);

  auto& root = keeper_.make<BKQDisk>();
  root.setDiskName("/");
  root.setPassword("r00t");
  root.addDiskItem(keeper_.make<BKQDiskItem>("/etc"));
  node.addDisk(root);
  return node;
}

BKQWinNTNode& NightlyBackup::defineWindowsNode() {
  auto& node = keeper_.make<BKQWinNTNode>("payroll");
  node.setNodeOSver("4.0");
  node.setUserName("Administrator");
  node.setPassword("l3tm31n");
  const auto modified = static_cast<BKQTimeFilter::BKQTimeAttrType>(1);
  const auto created = static_cast<BKQTimeFilter::BKQTimeAttrType>(2);
  node.addFilter(keeper_.make<BKQAfterTimeFilter>(modified, RWCollectableTime(kMarchFirst - kDay)));
  auto& before = keeper_.make<BKQBeforeTimeFilter>(created, RWCollectableTime(kMarchFirst));
  before.setInclExcl(kExclude);
  node.addFilter(before);

  auto& registry = keeper_.make<BKQDisk>(static_cast<BKQDisk::BKQDiskType>(4));
  registry.setDiskName("Registry");
  node.addDisk(registry);
  auto& drive = keeper_.make<BKQDisk>(static_cast<BKQDisk::BKQDiskType>(22));
  drive.setDiskName("D:");
  drive.setUser("backup");
  drive.setDiskPW2("p4yr0ll");
  drive.setEncryptionKey("0123abcd");
  auto& item = keeper_.make<BKQDiskItem>("\\payroll");
  item.addFile("march.xls");
  item.addFile("april.xls");
  item.addFile("may.xls");
  item.setOptions(4);
  drive.addDiskItem(item);
  node.addDisk(drive);
  return node;
}

BKQNDSNode& NightlyBackup::defineNDSNode() {
  auto& node = keeper_.make<BKQNDSNode>("tree");
  node.setNodeDomain("O=ACME");
  node.setNodeAddress("10.0.0.9");
  node.addDisk(keeper_.make<BKQDisk>());  // is never flattened
  return node;
}

BKQSybaseNode& NightlyBackup::defineDatabaseNode() {
  auto& node = keeper_.make<BKQSybaseNode>("dbserver");
  node.setUserName("sa");
  auto& database = keeper_.make<BKQDisk>(static_cast<BKQDisk::BKQDiskType>(31));
  database.setDiskName("accounts");
  database.setUser("sa");
  database.setDiskPW2("syb4se");
  database.addDiskItem(keeper_.make<BKQDiskItem>("master"));
  node.addDisk(database);
  return node;
}

BKQTapeNode& NightlyBackup::defineDestination() {
  // The job adopts its destination and deletes it.
  auto* node = new BKQTapeNode("library1");
  auto& first = keeper_.make<BKQTape>("DAILY", "NIGHT-01");
  first.setTapeID(0x12345);
  first.setTapeSeq(1);
  first.setSessionNumber(17);
  first.setQFABlockNumber(4096);
  first.setFileSystem(2);
  first.setPath("/ledgers");
  first.setLocation("shelf 4");
  first.addTapeItem(keeper_.make<BKQTapeItem>(7, static_cast<unsigned short>(512)));
  auto& item = keeper_.make<BKQTapeItem>(8, static_cast<unsigned short>(0));
  item.setFileOrDir("etc/passwd");
  item.setOptions(1);
  first.addTapeItem(item);
  first.addFilter(keeper_.make<BKQFileFilter>(kInclude, "*.db"));
  auto& extension = keeper_.make<BKQTapeXtension>(1000L);
  extension.setDBuser("sa");
  extension.setDBpw("syb4se");
  extension.setOptions(2);
  first.setTapeXtension(extension);
  node->addTape(first);

  auto& second = keeper_.make<BKQTape>("DAILY", "NIGHT-02");
  second.setSessionPW("t4pe");
  second.setTapeSeq(2);
  second.setSessionEndTime(2000);
  node->addTape(second);
  return *node;
}

void NightlyBackup::attachSchedule() {
  auto* mask = new BKQJobMask;
  for (unsigned int day = 1; day <= 10; ++day) {
    auto& unit = keeper_.make<BKQJobUnit>();
    unit.setJobType(static_cast<BKQJobUnit::BKQCruiseJobType>(0x100 + day));
    mask->addJobUnit(unit);
  }
  auto* schedule = new BKQRotationSchedule;
  schedule->setSubmitTime(RWCollectableTime(kMarchFirst));
  schedule->setExecTime(RWCollectableTime(kMarchFirst + kHour));
  schedule->setSetName("NIGHTSET");
  schedule->setJobMask(*mask);
  job_->setSchedule(*schedule);
}

void NightlyBackup::attachNotifications() {
  auto* fax = new BKQFax;
  fax->setHostName("faxhost");
  fax->setUserName("faxuser");
  fax->setUserPW("f4x");
  fax->setFaxNumber("555-0100");
  fax->setCoverPageFile("cover.txt");
  fax->setReceiverName("Night shift");
  job_->setFaxInfo(*fax);

  auto* email = new BKQMHSEMail;
  email->setHostName("mailhost");
  email->setUserName("mailuser");
  email->setUserPW("m4il");
  email->setMHSDir("sys:mhs");
  email->setMHSId("ops@acme");
  email->setMHSUserName("ops");
  job_->setEMailInfo(*email);

  printQueue_->setHostName("printhost");
  printQueue_->setUserName("printuser");
  printQueue_->setUserPW("pr1nt");
  printQueue_->setQueueName("Q_NIGHT");
  job_->setPrintQueue(*printQueue_);
}
