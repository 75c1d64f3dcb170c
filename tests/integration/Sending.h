#pragma once

#include <Zelmar01/printing/output/PrintSystem.h>
#include <Zelmar01/printing/output/RawPaths.h>

#include <chrono>
#include <string>

/// What a call came to and how long it took.
struct TSent
{
    Zelmar01::TPrintOutcome Outcome;
    std::string Message; ///< of the exception, if one was raised
    std::chrono::milliseconds Time{0};
};

template<class Call>
TSent timed(Call &&call)
{
    TSent sent;
    const auto start = std::chrono::steady_clock::now();
    try {
        call(sent.Outcome);
    } catch (const Zelmar01::EInOutError &error) {
        sent.Message = error.what();
    }
    sent.Time =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    return sent;
}

/// Bytes of all values, in order, again and again.
inline std::string everyByte(std::size_t count)
{
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<char>(i % 256);
    return bytes;
}
