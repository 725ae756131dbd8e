// What tools/mutate puts before every source that it compiles. `a < b` has become `a < zkflip::At<17, 18>() < b` there,
// and -a `zkflip::At<19>()->*a`: the same value, unless the environment's ZKOGL_FLIP is one of the numbers. So one
// build holds all flips. With ZKOGL_FLIP=record the operators compute both, and a byte for each number goes to the file
// ZKOGL_FLIP_FILE at the end: 0, this flip was never reached; 1, it never made a difference; 3, it would have made one.
#pragma once
#if __cplusplus >= 202002L  // the build system tries the compiler without the standard of the sources

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <utility>

namespace zkflip {

inline constexpr int none = -1, recording = -2;
inline unsigned char seen[ZKFLIP_COUNT];

inline int FromEnvironment() {
    const char* text = std::getenv("ZKOGL_FLIP");
    return text == nullptr ? none : std::strcmp(text, "record") == 0 ? recording : std::atoi(text);
}
inline const int chosen = FromEnvironment();

struct Recorder {
    ~Recorder() {
        const char* path = std::getenv("ZKOGL_FLIP_FILE");
        std::FILE* file = chosen == recording && path != nullptr ? std::fopen(path, "wb") : nullptr;
        if (file == nullptr)
            return;
        std::fwrite(seen, 1, sizeof seen, file);
        std::fclose(file);
    }
};
inline const Recorder recorder;

// A flip that would not compile leaves its number in the symbols of the program.
template <int Id>
[[gnu::noinline, gnu::used]] void DoesNotCompile() {}

#define ZKFLIP_OPERATION(Name, op)                                                                            \
    struct Name {                                                                                             \
        template <class A, class B>                                                                           \
        constexpr auto operator()(A&& a, B&& b) const -> decltype(std::forward<A>(a) op std::forward<B>(b)) { \
            return std::forward<A>(a) op std::forward<B>(b);                                                  \
        }                                                                                                     \
    }
ZKFLIP_OPERATION(Less, <);
ZKFLIP_OPERATION(LessEqual, <=);
ZKFLIP_OPERATION(Greater, >);
ZKFLIP_OPERATION(GreaterEqual, >=);
ZKFLIP_OPERATION(Equal, ==);
ZKFLIP_OPERATION(NotEqual, !=);
ZKFLIP_OPERATION(Plus, +);
ZKFLIP_OPERATION(Minus, -);
ZKFLIP_OPERATION(Add, +=);
ZKFLIP_OPERATION(Subtract, -=);
#undef ZKFLIP_OPERATION
struct Negative {
    template <class A>
    constexpr auto operator()(const A& a) const -> decltype(-a) {
        return -a;
    }
};
struct Itself {
    template <class A>
    constexpr auto operator()(const A& a) const -> decltype(+a) {
        return +a;
    }
};

template <class R>
bool Same(const R& a, const R& b) {
    if constexpr (std::is_scalar_v<R>)
        return std::memcmp(&a, &b, sizeof a) == 0;
    else
        return false;
}

// The value of one flip, of the operation's own type; whether there is such a thing is in `compiles`.
template <int Id, class R, class Flip, class... Operands>
struct Flipped {
    static constexpr bool compiles = [] {
        if constexpr (std::is_invocable_v<Flip, const Operands&...>)
            return std::is_convertible_v<std::invoke_result_t<Flip, const Operands&...>, R>;
        else
            return false;
    }();
    static R Value(const R& otherwise, const Operands&... operands) {
        if constexpr (compiles) {
            return static_cast<R>(Flip()(operands...));
        } else {
            DoesNotCompile<Id>();
            return otherwise;
        }
    }
    static void Note(const R& value, const Operands&... operands) {
        seen[Id] |= 1;
        if (!Same<R>(value, Value(value, operands...)))
            seen[Id] |= 2;
    }
};

template <int First, int Second, class Original, class FlipFirst, class FlipSecond, class... Operands>
constexpr auto Decide(const Operands&... operands) {
    using R = std::decay_t<decltype(Original()(operands...))>;
    R value = Original()(operands...);
    if (std::is_constant_evaluated() || chosen == none)
        return value;
    using A = Flipped<First, R, FlipFirst, Operands...>;
    using B = Flipped<Second, R, FlipSecond, Operands...>;
    if (chosen == First)
        return A::Value(value, operands...);
    if (chosen == Second)
        return B::Value(value, operands...);
    if (chosen == recording) {
        A::Note(value, operands...);
        if constexpr (First != Second)
            B::Note(value, operands...);
    }
    return value;
}

template <int First, int Second = First>
struct At {};

// What stands left of the operator, on its way to what stands right of it. For an assignment it is the other way round.
template <class T, class Original, int First, int Second>
struct Left {
    T value;
};

#define ZKFLIP_BINARY(op, Name, FlipFirst, FlipSecond)                           \
    template <class T, int First, int Second>                                    \
    constexpr Left<T, Name, First, Second> operator op(T a, At<First, Second>) { \
        return {std::move(a)};                                                   \
    }                                                                            \
    template <class T, int First, int Second, class U>                           \
    constexpr auto operator op(Left<T, Name, First, Second> a, U b) {            \
        return Decide<First, Second, Name, FlipFirst, FlipSecond>(a.value, b);   \
    }
ZKFLIP_BINARY(<, Less, LessEqual, Greater)
ZKFLIP_BINARY(<=, LessEqual, Less, GreaterEqual)
ZKFLIP_BINARY(>, Greater, GreaterEqual, Less)
ZKFLIP_BINARY(>=, GreaterEqual, Greater, LessEqual)
ZKFLIP_BINARY(==, Equal, NotEqual, NotEqual)
ZKFLIP_BINARY(!=, NotEqual, Equal, Equal)
ZKFLIP_BINARY(+, Plus, Minus, Minus)
ZKFLIP_BINARY(-, Minus, Plus, Plus)
#undef ZKFLIP_BINARY

template <int First, class U>
constexpr auto operator->*(At<First, First>, U b) {
    return Decide<First, First, Negative, Itself, Itself>(b);
}

template <class T, int Id, class Flip>
constexpr void Assign(T& a, const auto& b, auto original) {
    if (std::is_constant_evaluated() || chosen == none) {
        original(a, b);
        return;
    }
    if constexpr (std::is_invocable_v<Flip, T&, decltype(b)>) {
        if (chosen == Id) {
            Flip()(a, b);
            return;
        }
        T value = a, flipped = a;
        original(value, b);
        Flip()(flipped, b);
        if (chosen == recording)
            seen[Id] = static_cast<unsigned char>(seen[Id] | (Same<T>(value, flipped) ? 1 : 3));
    } else {
        DoesNotCompile<Id>();
    }
    original(a, b);
}

#define ZKFLIP_ASSIGNMENT(op, Name, Flip)                                      \
    template <int First, class U>                                              \
    constexpr Left<U, Name, First, First> operator op(At<First, First>, U b) { \
        return {std::move(b)};                                                 \
    }                                                                          \
    template <class T, class U, int First>                                     \
    constexpr T& operator op(T& a, Left<U, Name, First, First> b) {            \
        Assign<T, First, Flip>(a, b.value, Name());                            \
        return a;                                                              \
    }
ZKFLIP_ASSIGNMENT(+=, Add, Subtract)
ZKFLIP_ASSIGNMENT(-=, Subtract, Add)
#undef ZKFLIP_ASSIGNMENT

}  // namespace zkflip
#endif
