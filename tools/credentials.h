#ifndef BKOQ_TOOLS_CREDENTIALS_H_
#define BKOQ_TOOLS_CREDENTIALS_H_

#include <bkoq/bkoq.h>

#include <functional>

namespace bkoq::tool {

// Some classes take an account and its password by one call, and a job file gives them apart: to
// set the one leaves the other as it is.
enum class Credential { kUser, kPassword };

template <Credential wanted, class GetBoth>
auto gettingCredential(GetBoth getBoth) {
  return [getBoth](auto& object) {
    RWCollectableString user;
    RWCollectableString password;
    std::invoke(getBoth, object, user, password);
    return wanted == Credential::kUser ? user : password;
  };
}

template <Credential wanted, class GetBoth, class SetBoth>
auto settingCredential(GetBoth getBoth, SetBoth setBoth) {
  return [getBoth, setBoth](auto& object, const char* text) {
    RWCollectableString user;
    RWCollectableString password;
    std::invoke(getBoth, object, user, password);
    (wanted == Credential::kUser ? user : password) = text;
    std::invoke(setBoth, object, user, password);
  };
}

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_CREDENTIALS_H_
