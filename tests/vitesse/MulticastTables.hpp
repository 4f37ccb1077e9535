#pragma once

#include "tests/support/Access.hpp"

/// Accesses to the MAC table for the group 239.129.1.2 in VLAN 10, which is in row 0x07A.
namespace multicast {

using test_support::Accesses;
using test_support::reads;
using test_support::writes;

inline unsigned char const mac[] = {0x02, 0x01, 0x01, 0x5E, 0x00, 0x01};

/// The table's index for the four buckets of the row.
inline unsigned int const indexWord[] = {0x0000007A, 0x0000087A, 0x0000107A, 0x0000187A};

/// What the low data register holds for another group, and for this one without members.
inline constexpr unsigned int otherGroup = 0xFF010103;
inline constexpr unsigned int thisGroup = 0x00010102;

/// Reading the entry at the index.
inline Accesses readEntry(bool valid) {
    return {reads(2, 0, 0xB0, 0), writes(2, 0, 0xB0, 0x00000006), reads(2, 0, 0xB0, 0),
            reads(2, 0, 0xB0, valid ? 0x00000400 : 0)};
}

inline Accesses select(unsigned int bucket) {
    return {writes(2, 0, 0xC0, indexWord[bucket])};
}

inline Accesses emptyBucket(unsigned int bucket) {
    return select(bucket) + readEntry(false);
}

/// A search comes by a bucket that holds an entry, and looks whose it is.
inline Accesses bucketOf(unsigned int bucket, unsigned int low) {
    return select(bucket) + readEntry(true) + Accesses{reads(2, 0, 0x07, low)};
}

inline Accesses emptyRow() {
    return emptyBucket(0) + emptyBucket(1) + emptyBucket(2) + emptyBucket(3);
}

inline Accesses rowOfOthers() {
    return bucketOf(0, otherGroup) + bucketOf(1, otherGroup) + bucketOf(2, otherGroup) +
           bucketOf(3, otherGroup);
}

/// A group that is found in its row's first bucket.
inline Accesses foundFirst(unsigned int low = thisGroup) {
    return bucketOf(0, low) + select(0);
}

/// A free bucket that is searched for and found in an empty row.
inline Accesses foundEmptyRow() {
    return emptyRow() + emptyBucket(0) + select(0);
}

/// Writing the entry at the index.
inline Accesses writeEntry(unsigned int low, unsigned int high) {
    return {writes(2, 0, 0x07, low),        writes(2, 0, 0x06, high), reads(2, 0, 0xB0, 0),
            writes(2, 0, 0xB0, 0x00001E07), reads(2, 0, 0xB0, 0),     reads(2, 0, 0xB0, 0x00000400)};
}

} // namespace multicast
