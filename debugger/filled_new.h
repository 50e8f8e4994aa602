#ifndef BKOQ_DEBUGGER_FILLED_NEW_H_
#define BKOQ_DEBUGGER_FILLED_NEW_H_

namespace bkoq::debugger {

// What new memory holds before a constructor writes to it.
extern unsigned char newMemoryFill;

}  // namespace bkoq::debugger

#endif  // BKOQ_DEBUGGER_FILLED_NEW_H_
