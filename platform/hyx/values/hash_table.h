// The hash table of the library's interfaces.
#pragma once

#include "platform/hyx/values/types.h"

#include <unordered_map>

namespace hyx {

/// A table from keys to values, in no order.
template <class Key, class Value>
class HashTable : public std::unordered_map<Key, Value> {
public:
    using std::unordered_map<Key, Value>::unordered_map;

    /// The value of `key`, or a default-made one (null for pointers) where there is none.
    Value get(Key const& key) const {
        auto const entry = this->find(key);
        return entry == this->end() ? Value() : entry->second;
    }
};

class Object;
using ObjectPtrTable = HashTable<Name, Object*>;

} // namespace hyx
