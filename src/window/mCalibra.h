// Calibration of analog input 1 at two points: what is taken, when it is taken, and the three
// values that come of it. docs/calibration.md derives the formulae.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "plugin/calendar.h"

namespace quillon {

// What the operator is told.
inline constexpr const wchar_t* kInstructions =
    L"Posizionare l'interruttore di calibrazione su una delle due posizioni (HIGH o LOW)\r\n"
    L"Attendere di ottenere sul tester un valore stabile di tensione e trascrivere\r\n"
    L"il valore letto nella casella 'Tensione rilevata', quindi premere il pulsante MODE "
    L"dell'Nimbra"
    L"\r\n"
    L"N.B.: Trascrivere il valore di tensione inserendo il carattere '.' come separatore decimale!";
inline constexpr const wchar_t* kVoltageNotValid = L"Il valore di tensione non e' valido!";
inline constexpr const wchar_t* kVoltageNotValidTitle = L"Attenzione!!";
inline constexpr const wchar_t* kLowTaken =
    L"Calibrazione LOW eseguita correttamente!\r\n"
    L"Cambiare la posizione dell'interruttore su HIGH ed eseguire nuovamente la procedura.";
inline constexpr const wchar_t* kHighTaken =
    L"Calibrazione HIGH eseguita correttamente!\r\n"
    L"Cambiare la posizione dell'interruttore su LOW ed eseguire nuovamente la procedura.";
inline constexpr const wchar_t* kCalibrationDone =
    L"La calibrazione e' stata eseguita correttamente.";

enum class CalibrationPoint : std::uint8_t { kNone = 0, kLow = 1, kHigh = 2 };

// Both bounds of both readings lie outside.
struct PointLimits {
    std::int16_t countL = 0;
    std::int16_t countH = 0;
    float voltL = 0;
    float voltH = 0;
};

struct CalibrationLimits {
    PointLimits low;
    PointLimits high;
};

// Reads the sections "LowCalib" and "HighCalib" of the settings file through `read`, which gives an
// empty text for a missing key. A bound that is missing, or that its type cannot hold, is 0; counts
// are rounded halves to even.
CalibrationLimits ReadCalibrationLimits(
    const std::function<std::wstring(const wchar_t* section, const wchar_t* key)>& read);

// The number that a typed voltage begins with, "." being its separator in every locale, in single
// precision; infinite when single precision cannot hold it.
float TypedVoltage(std::wstring_view text);

// LOW is asked first.
CalibrationPoint Classify(std::int16_t count, float volts, const CalibrationLimits& limits);

struct CalibrationRecord {
    std::int16_t countL = 0;
    std::int16_t countH = 0;
    float voltL = 0;
    float voltH = 0;

    // Replaces the readings of that point; kNone does nothing.
    void Take(CalibrationPoint point, std::int16_t count, float volts);
    // None of the four is 0.
    bool IsComplete() const;
    bool operator==(const CalibrationRecord&) const = default;
};

// The record of this process; windows come and go without it. User-interface thread only.
CalibrationRecord& Calibration();

// True when MODE is pressed and no other input is active.
bool IsModeAlone(std::uint8_t inputs);

// What the device computes with: R(N) = B (N - O) / (A - N).
struct CalibrationValues {
    std::int16_t b = 0;
    std::int16_t a = 0;
    std::int16_t offset = 0;  // of O without its sign

    bool operator==(const CalibrationValues&) const = default;
};

// In single precision, rounded after every operation. nullopt when a denominator is 0 or a value
// leaves 16 bits. Raises no floating-point exception but the inexact ones.
std::optional<CalibrationValues> ComputeCalibration(const CalibrationRecord& record);

// The nine bytes of factory data as 18 upper-case digits: the three words, 01, the year after 1998,
// the week. nullopt for a year before 1998 or after 2253.
std::optional<std::wstring> CalibrationText(const CalibrationValues& values, const Date& today);

}  // namespace quillon
