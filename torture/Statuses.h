// The statuses that docs/abi.md promises, written down once more: what a host answers is held against these, not
// against what any host was compiled with.
#pragma once

namespace torture {

inline constexpr int kStatusBadInfo = -701;
inline constexpr int kStatusDuplicate = -702;
inline constexpr int kStatusNoParent = -703;
inline constexpr int kStatusNoProperty = -711;
inline constexpr int kStatusNoClass = -721;
inline constexpr int kStatusNoInstance = -722;
inline constexpr int kStatusNoDocument = -731;
inline constexpr int kStatusNotInDocument = -732;
inline constexpr int kStatusNotHere = -733;
inline constexpr int kStatusBadObject = -734;
inline constexpr int kStatusUnwritable = -735;
inline constexpr int kStatusRefused = -736;
/// What a puppet answers when it is told to fail.
inline constexpr int kStatusOwn = -4711;

}  // namespace torture
