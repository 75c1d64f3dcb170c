#pragma once

#include <Zelmar01/tasks/service/MSTask.h>
#include <Zelmar01/tasks/service/TaskResults.h>

#include <bit>
#include <memory>

#include <windows.h>

#include <mstask.h>

namespace Zelmar01 {

/// What the wrappers of the system's objects share. A COM object is held by a shared pointer that keeps
/// something else alive until the object was released: the apartment that it lives in, or the object that it
/// came from, which in turn keeps the apartment.

/// COM for the thread that makes this; the system counts such takings, and one that is not granted, because
/// the host has made another choice, is not given back. It ends on the same thread.
class TComApartment
{
public:
    TComApartment() : m_taken(SUCCEEDED(CoInitialize(nullptr))) {}
    ~TComApartment()
    {
        if (m_taken)
            CoUninitialize();
    }
    TComApartment(const TComApartment &) = delete;
    TComApartment &operator=(const TComApartment &) = delete;

private:
    bool m_taken;
};

/// Takes over the caller's reference to a COM object, which may be null.
template<class TObject>
std::shared_ptr<TObject> HoldComObject(std::shared_ptr<const void> keeper, TObject *object)
{
    if (!object)
        return nullptr;
    return {object, [kept = std::move(keeper)](TObject *released) { released->Release(); }};
}

inline ::GUID SystemGuid(const TGuid &guid)
{
    return std::bit_cast<::GUID>(guid);
}

/// Another interface of a COM object; null when it does not have it.
template<class TObject, class TUnknown>
std::shared_ptr<TObject> ComInterface(const std::shared_ptr<TUnknown> &object, const TGuid &iid)
{
    void *found = nullptr;
    if (FAILED(object->QueryInterface(SystemGuid(iid), &found)))
        return nullptr;
    return HoldComObject(object, static_cast<TObject *>(found));
}

/// A text as the system's calls take it.
inline const wchar_t *SystemText(const char16_t *text)
{
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    return reinterpret_cast<const wchar_t *>(text);
}

/// Calls an operation that takes a text, unless there is none: not every service survives that.
template<class TObject, class TOwner>
TTaskResult PassText(TObject &object, HRESULT (WINAPI TOwner::*set)(const wchar_t *), const char16_t *text)
{
    return text ? (object.*set)(SystemText(text)) : TaskResult::InvalidArgument;
}

/// Calls an operation that answers one value: a number, a record or a block. `answer` is the same value under
/// our name of its type, and stays as it was after a failure.
template<class TObject, class TOwner, class TSystemValue, class TValue>
TTaskResult TakeValue(TObject &object, HRESULT (WINAPI TOwner::*get)(TSystemValue *), TValue &answer)
{
    TSystemValue value{};
    const TTaskResult result = (object.*get)(&value);
    if (Succeeded(result))
        answer = std::bit_cast<TValue>(value);
    return result;
}

} // namespace Zelmar01
