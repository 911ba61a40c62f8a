// Bytes that a state is written into, and read from again.
#pragma once

#include "platform/hyx/values/types.h"

#include <cstring>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace hyx {

/// Goes over the same values in the same order both ways, so that one list of them serves to save and to restore.
/// The bytes are this machine's.
class StateBytes {
public:
    /// Saves.
    StateBytes() = default;

    /// Restores.
    explicit StateBytes(std::string bytes) : m_bytes(std::move(bytes)), m_restores(true) {}

    bool restores() const { return m_restores; }

    std::string const& bytes() const { return m_bytes; }

    template <class... Values>
    void operator()(Values&... values) {
        (exchange(values), ...);
    }

    /// A number that must be the same when the state is restored, of `what`.
    void expect(UInt number, char const* what) {
        UInt saved = number;
        exchange(saved);
        if (saved != number)
            throw std::runtime_error("the state was saved with " + std::to_string(saved) + " " + what +
                                     "; now there are " + std::to_string(number));
    }

    /// Throws std::runtime_error where more is left to restore.
    void finish() const {
        if (m_restores && m_place != m_bytes.size())
            throw std::runtime_error("the saved state belongs to other objects");
    }

private:
    template <class T>
    void exchange(T& value) {
        static_assert(std::is_trivially_copyable_v<T>);
        exchangeBytes(&value, sizeof value);
    }

    template <class T>
    void exchange(std::vector<T>& values) {
        static_assert(std::is_trivially_copyable_v<T>);
        UInt size = values.size();
        exchange(size);
        if (m_restores) {
            if (size > (m_bytes.size() - m_place) / sizeof(T))
                throw std::runtime_error("the saved state is cut off");
            values.resize(size);
        }
        exchangeBytes(values.data(), size * sizeof(T));
    }

    void exchange(std::mt19937_64& generator) {
        std::stringstream text;
        if (!m_restores)
            text << generator;
        std::string const written = text.str();
        std::vector<char> characters(written.begin(), written.end());
        exchange(characters);
        if (m_restores) {
            text.str(std::string(characters.begin(), characters.end()));
            text >> generator;
        }
    }

    void exchangeBytes(void* values, std::size_t size) {
        if (!m_restores) {
            m_bytes.append(static_cast<char const*>(values), size);
            return;
        }
        if (m_bytes.size() - m_place < size)
            throw std::runtime_error("the saved state is cut off");
        if (size > 0)
            std::memcpy(values, m_bytes.data() + m_place, size);
        m_place += size;
    }

    std::string m_bytes;
    std::size_t m_place = 0;
    bool m_restores = false;
};

} // namespace hyx
