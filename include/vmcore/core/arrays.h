// The growable arrays: CPtrArray, CStringArray, CUIntArray, CDWordArray and CByteArray. Elements
// lie one behind the other in the order of insertion; new ones are 0, null or an empty string.
//
//     CPtrArray windows;
//     windows.Add(window);                                   // its index
//     for (int i = 0; i < windows.GetSize(); ++i) use(windows[i]);
//     windows.RemoveAt(0);
//
// An array owns its elements, but not what a CPtrArray's pointers point to. It cannot be copied by
// accident: use Copy or Append. Adding grows the storage in proportion, so that it costs constant
// time on average; pointers and references into an array are valid until it next grows or shrinks.
// An array belongs to one thread at a time.
//
// Indices: reading and writing through GetAt and operator[] is not checked, an index out of range
// is the caller's fault. The functions that change the array ignore what is out of range as said.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

namespace vm {

/// What the five classes have in common. Instantiated in the library for their elements only.
template <class T>
class VM_API Array {
public:
    Array() noexcept = default;
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;

    int GetSize() const { return m_size; }
    int GetCount() const { return m_size; }
    BOOL IsEmpty() const { return m_size == 0; }
    int GetUpperBound() const { return m_size - 1; } ///< -1 when empty

    const T& GetAt(int index) const { return m_data[index]; }
    const T& operator[](int index) const { return m_data[index]; }
    T& operator[](int index) { return m_data[index]; }
    T* GetData() { return m_data; } ///< null when nothing was ever stored
    const T* GetData() const { return m_data; }

    void SetAt(int index, T value);     ///< ignored out of range
    void SetAtGrow(int index, T value); ///< makes the array longer if need be; ignored below 0
    int Add(T value);                   ///< appends; returns the index
    /// Inserts `count` times, in front of the element at `index`; beyond the end the gap is filled
    /// with new elements. Ignored for an index below 0 or a count below 1.
    void InsertAt(int index, T value, int count = 1);
    /// Removes what there is of `count` elements from `index` on: nothing from the end on, nothing
    /// for an index below 0.
    void RemoveAt(int index, int count = 1);
    void RemoveAll(); ///< also frees the storage
    /// Cuts, or appends new elements; 0 also frees the storage; ignored below 0. `growBy` is
    /// ignored.
    void SetSize(int size, int growBy = -1);
    int Append(const Array& source); ///< returns the index of the first appended element
    void Copy(const Array& source);  ///< replaces the contents

protected:
    ~Array(); // not virtual: arrays are not deleted through this class

private:
    void Reserve(int size);
    T* OpenGap(int index, int count);

    T* m_data = nullptr;
    int m_size = 0;
    int m_capacity = 0;
};

extern template class Array<void*>;
extern template class Array<CString>;
extern template class Array<UINT>;
extern template class Array<BYTE>;

} // namespace vm

class CPtrArray : public vm::Array<void*> {};
/// Assigning or comparing an element is assigning or comparing a CString.
class CStringArray : public vm::Array<CString> {};
class CUIntArray : public vm::Array<UINT> {};
class CDWordArray : public vm::Array<DWORD> {};
class CByteArray : public vm::Array<BYTE> {};
