#ifndef BKOQ_TESTS_SUPPORT_PRIVATE_MEMBER_H_
#define BKOQ_TESTS_SUPPORT_PRIVATE_MEMBER_H_

namespace bkoq::test {

// Some members have no accessor, but every copy carries them. A test reaches one so:
//
//   struct Reserved {
//     using Type = unsigned int BKQJob::*;
//     friend constexpr Type privateMember(Reserved);
//   };
//   template struct PrivateMember<Reserved, &BKQJob::reserved_>;
//   ... job.*privateMember(Reserved()) ...
//
// since access is not checked in an explicit instantiation. The tag is in the namespace of the
// template, where its function is.
template <class Tag, typename Tag::Type member>
struct PrivateMember {
  friend constexpr typename Tag::Type privateMember(Tag /*tag*/) { return member; }
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_PRIVATE_MEMBER_H_
