// The one implementation of the growable arrays: raw storage in which the first m_size places hold
// elements.
#include <vmcore/core/arrays.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

static_assert(sizeof(CPtrArray) == 16 && sizeof(CStringArray) == 16 && sizeof(CByteArray) == 16,
              "part of the binary interface");

namespace vm {
namespace {

constexpr int s_leastCapacity = 8;

// Moves `count` elements to raw storage `to`, which may overlap them, and leaves raw storage
// behind. Elements are moved, not assigned: a CString keeps its buffer, and with it which empty
// form it has.
template <class T>
void Relocate(T* from, T* to, int count) {
    if constexpr (std::is_trivially_copyable_v<T>) {
        if (count > 0) std::memmove(to, from, static_cast<std::size_t>(count) * sizeof(T));
        return;
    }
    const auto relocateOne = [&](int i) {
        std::construct_at(to + i, std::move(from[i]));
        std::destroy_at(from + i);
    };
    if (to < from)
        for (int i = 0; i < count; ++i) relocateOne(i);
    else if (to > from)
        for (int i = count; i-- > 0;) relocateOne(i);
}

int Sum(int size, int more) {
    if (more > std::numeric_limits<int>::max() - size) throw std::bad_array_new_length();
    return size + more;
}

int GrownCapacity(int capacity, int needed) {
    const int half = capacity / 2;
    const int grown =
        capacity > std::numeric_limits<int>::max() - half ? capacity : capacity + half;
    return std::max({grown, needed, s_leastCapacity});
}

} // namespace

template <class T>
Array<T>::~Array() {
    RemoveAll();
}

template <class T>
void Array<T>::Reserve(int size) {
    if (size <= m_capacity) return;
    const int capacity = GrownCapacity(m_capacity, size);
    T* const grown = std::allocator<T>().allocate(static_cast<std::size_t>(capacity));
    Relocate(m_data, grown, m_size);
    if (m_data) std::allocator<T>().deallocate(m_data, static_cast<std::size_t>(m_capacity));
    m_data = grown;
    m_capacity = capacity;
}

// Makes room for `count` elements at `index` (at most the size); the gap is raw storage.
template <class T>
T* Array<T>::OpenGap(int index, int count) {
    Reserve(Sum(m_size, count));
    T* const gap = m_data + index;
    Relocate(gap, gap + count, m_size - index);
    m_size += count;
    return gap;
}

template <class T>
void Array<T>::SetAt(int index, T value) {
    if (index < 0 || index >= m_size) return;
    std::destroy_at(m_data + index);
    std::construct_at(m_data + index, std::move(value));
}

template <class T>
void Array<T>::SetAtGrow(int index, T value) {
    if (index < 0) return;
    if (index >= m_size) SetSize(Sum(index, 1));
    SetAt(index, std::move(value));
}

template <class T>
int Array<T>::Add(T value) {
    std::construct_at(OpenGap(m_size, 1), std::move(value));
    return m_size - 1;
}

template <class T>
void Array<T>::InsertAt(int index, T value, int count) {
    if (index < 0 || count < 1) return;
    if (index > m_size) SetSize(index);
    std::uninitialized_fill_n(OpenGap(index, count), count, value);
}

template <class T>
void Array<T>::RemoveAt(int index, int count) {
    if (index < 0 || index >= m_size || count < 1) return;
    const int removed = std::min(count, m_size - index);
    T* const first = m_data + index;
    std::destroy_n(first, removed);
    Relocate(first + removed, first, m_size - index - removed);
    m_size -= removed;
}

template <class T>
void Array<T>::RemoveAll() {
    std::destroy_n(m_data, m_size);
    if (m_data) std::allocator<T>().deallocate(m_data, static_cast<std::size_t>(m_capacity));
    m_data = nullptr;
    m_size = m_capacity = 0;
}

template <class T>
void Array<T>::SetSize(int size, int) {
    if (size < 0) return;
    if (size == 0) return RemoveAll();
    if (size < m_size) return RemoveAt(size, m_size - size);
    const int added = size - m_size;
    std::uninitialized_value_construct_n(OpenGap(m_size, added), added);
}

template <class T>
int Array<T>::Append(const Array& source) {
    const int first = m_size;
    const int count = source.m_size; // the source may be this array
    T* const gap = OpenGap(first, count);
    std::uninitialized_copy_n(source.m_data, count, gap);
    return first;
}

template <class T>
void Array<T>::Copy(const Array& source) {
    if (this == &source) return;
    RemoveAll();
    Append(source);
}

template class Array<void*>;
template class Array<CString>;
template class Array<UINT>;
template class Array<BYTE>;

} // namespace vm
