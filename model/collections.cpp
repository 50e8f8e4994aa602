#include "bkoq/collections.h"

BKQNodeCol::~BKQNodeCol() = default;
BKQRestoreNodeCol::~BKQRestoreNodeCol() = default;
BKQTapeNodeCol::~BKQTapeNodeCol() = default;
BKQFilterCol::~BKQFilterCol() = default;
BKQStringCol::~BKQStringCol() = default;
BKQTapeCol::~BKQTapeCol() = default;
BKQDiskCol::~BKQDiskCol() = default;
BKQTapeItemCol::~BKQTapeItemCol() = default;
BKQDiskItemCol::~BKQDiskItemCol() = default;
BKQJobUnitCol::~BKQJobUnitCol() = default;
BKQExceptionDayCol::~BKQExceptionDayCol() = default;
