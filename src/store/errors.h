// The error numbers of the object layer. Their texts are German; callers log them with the prefix
// "DvISE-Error ".
#pragma once

namespace velmora::store::store_error {

inline constexpr int NotFound = 1001;     // no such archive, entry, attachment, user
inline constexpr int NoAccess = 1002;     // the user lacks the right
inline constexpr int NotEmpty = 1003;     // an archive that holds something is not deleted
inline constexpr int Protected = 1004;    // roots and special archives are not deleted or renamed
inline constexpr int Busy = 1005;         // another process held the store for longer than the wait
inline constexpr int Damaged = 1006;      // a database or record list that cannot be read
inline constexpr int Failed = 1007;       // a write that did not succeed; the text says why
inline constexpr int BadName = 1008;      // a name or path that does not fit its record
inline constexpr int LogonFailed = 1009;  // no such server, or no user of it
inline constexpr int WrongKind = 1010;    // the operation does not exist for this item type
inline constexpr int ReadOnlyField = 1011;
inline constexpr int Unfinished = 1012;  // a write was interrupted, and whoever only looks does not undo it

}  // namespace velmora::store::store_error
