// SPDX-License-Identifier: GPL-3.0-or-later
// The BASIC run-time the game is written against: fixed tables with their own
// bounds, narrow integers that refuse to overflow, the arithmetic helpers
// (Int, Mod, rounding, numbers as text) and the run-time error that ends the
// program. Everything here is plain C++; the error box itself lives in
// errore_runtime.cpp.
#pragma once

#include <cmath>
#include <cstdint>
#include <exception>
#include <limits>
#include <new>
#include <string>
#include <type_traits>

namespace basic {

// A run-time error as the classic runtime raises it: a number and its text.
class ErroreRuntime : public std::exception {
public:
    explicit ErroreRuntime(int numero);
    int numero() const { return numero_; }
    const std::string& testo() const { return testo_; }
    const char* what() const noexcept override { return testo_.c_str(); }

private:
    int numero_;
    std::string testo_;
};

// The standard text of a run-time error number ("Subscript out of range").
std::string testo_errore(int numero);

// Raises run-time error `numero`.
[[noreturn]] void errore(int numero);

// Thrown to unwind the game's own frames once the program has ended while
// the test hook keeps the process alive (see fine_programma).
struct ProgrammaTerminato {};

// Thrown by a wait of the game that has outlived what it waited for (a new
// hand dealt while it waited): it unwinds the game's frames back to the event
// handler that started them, which ends there quietly.
struct AttesaSuperata {};

// ---------------------------------------------------------------- integers

// A whole number held in a narrow type. Assigning a value that does not fit
// is run-time error 6 "Overflow", as in the classic runtime; reading it gives
// a long, so arithmetic never overflows in between.
template <class T>
class Intero {
public:
    constexpr Intero() = default;
    template <class I, class = std::enable_if_t<std::is_integral_v<I>>>
    constexpr Intero(I valore) : v_(restringi(static_cast<long long>(valore)))
    {}
    template <class I, class = std::enable_if_t<std::is_integral_v<I>>>
    Intero(Intero<I> altro) : v_(restringi(static_cast<long>(altro)))
    {}
    // A fraction must be rounded explicitly (CInt / CByte) before it is stored.
    Intero(double) = delete;
    Intero(float) = delete;

    constexpr operator long() const { return v_; }
    constexpr T valore() const { return v_; }

private:
    static constexpr T restringi(long long x)
    {
        if (x < static_cast<long long>(std::numeric_limits<T>::min()) ||
            x > static_cast<long long>(std::numeric_limits<T>::max()))
            errore(6);
        return static_cast<T>(x);
    }
    T v_ = 0;
};

using Byte = Intero<std::uint8_t>;  // 0 to 255
using Integer = Intero<std::int16_t>;  // -32768 to 32767
using Long = std::int32_t;

// ---------------------------------------------------------------- arithmetic

// Int: rounds towards minus infinity.
inline long Int(double x) { return static_cast<long>(std::floor(x)); }

// Mod: the remainder has the sign of the dividend (C++ % already does that).
inline long Mod(long a, long b)
{
    if (b == 0) errore(11);
    return a % b;
}

// Round to the nearest whole number, an exact half to the even neighbour.
inline double Round(double x) { return std::nearbyint(x); }

// CInt / CByte / CLng: round half to even, then narrow.
inline Integer CInt(double x)
{
    const double r = Round(x);
    if (r < -32768.0 || r > 32767.0) errore(6);
    return Integer(static_cast<int>(r));
}
inline Byte CByte(double x)
{
    const double r = Round(x);
    if (r < 0.0 || r > 255.0) errore(6);
    return Byte(static_cast<int>(r));
}
inline Long CLng(double x)
{
    const double r = Round(x);
    if (r < -2147483648.0 || r > 2147483647.0) errore(6);
    return static_cast<Long>(r);
}

// Str: a number written as text, with a leading blank where the sign of a
// negative number would stand (" 7", "-3").
inline std::string Str(long n) { return n < 0 ? std::to_string(n) : " " + std::to_string(n); }

// Val of a text such as " 40": leading blanks skipped, digits read until the
// first other character; 0 when there is no number.
long Val(const std::string& testo);

// ---------------------------------------------------------------- tables

// A fixed table with explicit bounds LO to HI, both inclusive. An index out of
// bounds is run-time error 9 "Subscript out of range".
template <class T, long LO, long HI>
class Tabella {
public:
    static constexpr long basso = LO;
    static constexpr long alto = HI;

    T& operator()(long i)
    {
        if (i < LO || i > HI) errore(9);
        return v_[i - LO];
    }
    const T& operator()(long i) const
    {
        if (i < LO || i > HI) errore(9);
        return v_[i - LO];
    }
    void azzera()
    {
        for (auto& x : v_) x = T{};
    }

private:
    T v_[HI - LO + 1]{};
};

// A two-dimensional fixed table, both dimensions checked.
template <class T, long LO1, long HI1, long LO2, long HI2>
class Tabella2 {
public:
    T& operator()(long i, long j)
    {
        if (i < LO1 || i > HI1 || j < LO2 || j > HI2) errore(9);
        return v_[i - LO1][j - LO2];
    }
    const T& operator()(long i, long j) const
    {
        if (i < LO1 || i > HI1 || j < LO2 || j > HI2) errore(9);
        return v_[i - LO1][j - LO2];
    }
    void azzera()
    {
        for (auto& riga : v_)
            for (auto& x : riga) x = T{};
    }

private:
    T v_[HI1 - LO1 + 1][HI2 - LO2 + 1]{};
};

// ---------------------------------------------------------------- ending

// End: the program stops at once. In the real program the process exits; with
// the test hook on, the end is recorded and ProgrammaTerminato unwinds the
// game's frames instead.
[[noreturn]] void fine_programma(int codice = 0);

// What the classic runtime does with an unhandled run-time error: the message
// box with the number and text of the error, then the end of the program.
[[noreturn]] void errore_fatale(const ErroreRuntime& e);

// Runs one event handler of the game. Every place where the window system
// hands control to the game goes through here, so that a run-time error ends
// the program with its message box and never unwinds through the toolkit.
// True once the program has ended (only ever seen with the test hook on) or
// while the box of a fatal error is on screen.
bool programma_terminato();

template <class F>
void protetto(F&& gestore) noexcept
{
    // While the program is ending, events that still arrive do nothing.
    if (programma_terminato()) return;
    try {
        try {
            gestore();
        } catch (const ErroreRuntime& e) {
            errore_fatale(e);
        } catch (const ProgrammaTerminato&) {
        } catch (const AttesaSuperata&) {
        } catch (const std::bad_alloc&) {
            errore_fatale(ErroreRuntime(7));
        } catch (...) {
            errore_fatale(ErroreRuntime(51));
        }
    } catch (const ProgrammaTerminato&) {}
}

// Called by the game's own waits: unwinds once the program has ended.
inline void verifica_fine()
{
    if (programma_terminato()) throw ProgrammaTerminato{};
}

// ---------------------------------------------------------------- test hook

namespace prova {
// With the hook on, the end of the program and fatal errors are recorded
// instead of ending the process, and no message box is shown.
void attiva(bool acceso = true);
bool attivo();
// The last fatal run-time error (its number; 0 = none) and the exit code of
// the last end of program (-1 = none).
int ultimo_errore_fatale();
int codice_di_uscita();
// Clears what was recorded, so that the next test starts with a live program.
void azzera();
}  // namespace prova

}  // namespace basic
