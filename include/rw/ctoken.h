#ifndef RW_CTOKEN_H_
#define RW_CTOKEN_H_

#include "rw/cstring.h"
#include "rw/export.h"

/// Splits a text, of which it keeps a copy, into tokens.
class RW_API RWCTokenizer {
 public:
  explicit RWCTokenizer(const RWCString& text) noexcept;  ///< of a copy of `text`
  ~RWCTokenizer();

  /// The next run of characters that are none of `delimiters`; empty tokens are skipped. Gives the
  /// empty text when no token is left.
  RWCString operator()(const char* delimiters = " \t\n") noexcept;

 private:
  RWCString text_;
  unsigned int next_;
};

#endif  // RW_CTOKEN_H_
