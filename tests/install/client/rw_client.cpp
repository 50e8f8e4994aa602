#include <rw/collstr.h>
#include <rw/slistcol.h>

/* As a program that uses the class library's stand-in alone. */
int main() {
  RWCollectableString text("text");
  RWSlistCollectables list;
  list.insert(&text);
  return list.contains(&text) ? 0 : 1;
}
