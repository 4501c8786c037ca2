#pragma once

// Growable array of pointers, indexed from 0. It neither references nor deletes what the pointers
// lead to. Capacity doubles from one place: 1, 2, 4, 8.
template <class T>
class list {
 public:
  list() = default;
  ~list() { delete[] places_; }
  list(const list&) = delete;
  list& operator=(const list&) = delete;

  int Size() const { return count_; }
  int Capacity() const { return capacity_; }
  int FreePlaces() const { return free_; }
  // Null past either end.
  T* operator[](int iIndex) const {
    return iIndex < 0 || iIndex >= count_ ? nullptr : places_[iIndex];
  }

  void Append(T* iElement) {
    if (free_ == 0) Grow();
    places_[count_++] = iElement;
    --free_;
  }
  // Index of the last equal pointer, -1 when there is none; searched from the end.
  int Locate(const T* iElement) const {
    int index = count_ - 1;
    while (index >= 0 && places_[index] != iElement) --index;
    return index;
  }
  void RemoveIndex(int iIndex) {
    if (iIndex < 0 || iIndex >= count_) return;
    for (int i = iIndex + 1; i < count_; ++i) places_[i - 1] = places_[i];
    --count_;
    ++free_;
  }
  // Back to a list that never held anything; frees the array.
  void Reset() {
    delete[] places_;
    places_ = nullptr;
    count_ = capacity_ = free_ = 0;
  }

 private:
  void Grow() {
    const int capacity = capacity_ == 0 ? 1 : 2 * capacity_;
    T** const places = new T*[static_cast<unsigned>(capacity)];
    for (int i = 0; i < count_; ++i) places[i] = places_[i];
    delete[] places_;
    places_ = places;
    free_ = capacity - count_;
    capacity_ = capacity;
  }

  int count_ = 0;
  int capacity_ = 0;
  int free_ = 0;
  T** places_ = nullptr;
};
