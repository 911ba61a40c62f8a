// Element access and arithmetic, written once for all small vectors.
#pragma once

#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace hyx {

/// The arithmetic that small fixed-size values share: `Self` holds exactly `N` members of type `T`, nothing else.
template <class Self, class T, std::size_t N>
class Components {
public:
    using value_type = T;

    /// The number of components.
    static constexpr std::size_t size() { return N; }

    T* ptr() { return reinterpret_cast<T*>(static_cast<Self*>(this)); }

    T const* ptr() const { return reinterpret_cast<T const*>(static_cast<Self const*>(this)); }

    /// Unchecked access; `at` checks.
    T& operator[](std::size_t index) { return ptr()[index]; }

    T operator[](std::size_t index) const { return ptr()[index]; }

    /// Throws std::out_of_range for an index that is not a component.
    T at(std::size_t index) const {
        if (index >= N)
            throw std::out_of_range("component index out of range");
        return ptr()[index];
    }

    friend Self operator+(Self a, Self const& b) { return a += b; }

    friend Self operator-(Self a, Self const& b) { return a -= b; }

    friend Self operator*(Self a, T factor) { return a *= factor; }

    friend Self operator*(T factor, Self a) { return a *= factor; }

    friend Self operator/(Self a, T divisor) { return a /= divisor; }

    friend Self& operator+=(Self& a, Self const& b) {
        for (std::size_t i = 0; i < N; ++i)
            a[i] += b[i];
        return a;
    }

    friend Self& operator-=(Self& a, Self const& b) {
        for (std::size_t i = 0; i < N; ++i)
            a[i] -= b[i];
        return a;
    }

    friend Self& operator*=(Self& a, T factor) {
        for (std::size_t i = 0; i < N; ++i)
            a[i] *= factor;
        return a;
    }

    friend Self& operator/=(Self& a, T divisor) {
        for (std::size_t i = 0; i < N; ++i)
            a[i] /= divisor;
        return a;
    }

    friend bool operator==(Self const& a, Self const& b) {
        for (std::size_t i = 0; i < N; ++i)
            if (a[i] != b[i])
                return false;
        return true;
    }

    Self operator-() const {
        Self negated;
        for (std::size_t i = 0; i < N; ++i)
            negated[i] = -ptr()[i];
        return negated;
    }

    /// The scalar product with another value.
    T dot(Self const& other) const {
        T sum = 0;
        for (std::size_t i = 0; i < N; ++i)
            sum += ptr()[i] * other[i];
        return sum;
    }

    /// The square of the length.
    T length2() const { return dot(static_cast<Self const&>(*this)); }

    /// The Euclidean length.
    T length() const { return static_cast<T>(std::sqrt(length2())); }

    /// This value with length one; a zero value stays zero.
    Self normal() const {
        Self result = static_cast<Self const&>(*this);
        T const size = length();
        return size > 0 ? result /= size : result;
    }

    /// Scales to length one and returns the former length; a zero value stays zero.
    T normalize() {
        T const former = length();
        static_cast<Self&>(*this) = normal();
        return former;
    }
};

} // namespace hyx
