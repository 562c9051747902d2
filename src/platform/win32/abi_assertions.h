// Assertions that one of our plain types has the layout of the platform's own, for the checks of
// the ABI alone: member by member, by place and width.
#pragma once

#include <cstddef>

#define OSTREL_SAME_SIZE(ours, theirs)           \
  static_assert(sizeof(ours) == sizeof(theirs)); \
  static_assert(alignof(ours) == alignof(theirs))
#define OSTREL_SAME_MEMBER(ours, theirs, member)                     \
  static_assert(offsetof(ours, member) == offsetof(theirs, member)); \
  static_assert(sizeof(ours::member) == sizeof(theirs::member))
// For members that bear other names.
#define OSTREL_SAME_PLACE(ours, member, theirs, theirMember)              \
  static_assert(offsetof(ours, member) == offsetof(theirs, theirMember)); \
  static_assert(sizeof(ours::member) == sizeof(theirs::theirMember))
#define OSTREL_SAME_VALUE(ours, theirs) \
  static_assert(static_cast<unsigned long long>(ours) == static_cast<unsigned long long>(theirs))
// For 32-bit numbers that the platform's headers give a sign.
#define OSTREL_SAME_CODE(ours, theirs) \
  static_assert(static_cast<unsigned>(ours) == static_cast<unsigned>(theirs))
