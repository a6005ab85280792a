#pragma once
// A value or a typed failure: the result form of operations that the system lets fail.
// (The standard one arrives with C++23; this carries just what the core uses.)

#include <cassert>
#include <utility>
#include <variant>

namespace zd {

template <class E>
struct Unexpected {
    E error;
};
template <class E>
Unexpected<E> unexpected(E e) {
    return {std::move(e)};
}

template <class T, class E>
class Expected {
public:
    Expected(T value) : v_(std::in_place_index<0>, std::move(value)) {}  // NOLINT(google-explicit-constructor)
    Expected(Unexpected<E> u) : v_(std::in_place_index<1>, std::move(u.error)) {}  // NOLINT
    bool hasValue() const { return v_.index() == 0; }
    explicit operator bool() const { return hasValue(); }
    T& value() { assert(hasValue()); return std::get<0>(v_); }
    const T& value() const { assert(hasValue()); return std::get<0>(v_); }
    T& operator*() { return value(); }
    const T& operator*() const { return value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }
    const E& error() const { assert(!hasValue()); return std::get<1>(v_); }

private:
    std::variant<T, E> v_;
};

// Success without a value.
template <class E>
class Expected<void, E> {
public:
    Expected() = default;
    Expected(Unexpected<E> u) : error_(std::move(u.error)), failed_(true) {}  // NOLINT
    bool hasValue() const { return !failed_; }
    explicit operator bool() const { return hasValue(); }
    const E& error() const { assert(failed_); return error_; }

private:
    E error_{};
    bool failed_ = false;
};

}  // namespace zd
