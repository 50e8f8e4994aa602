#include "rw/zone.h"

const RWZone& RWZone::local() noexcept {
  static const RWZone kLocal;
  return kLocal;
}
