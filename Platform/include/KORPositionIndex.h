// KORPositionIndex: finds a key's position in a table its owner keeps.
//
// What need it serves: lookups by key in tables of up to hundreds of
// thousands of keys (the declarations of a resource file, the objects of the
// viewer catalogue) without following pointers through a heap that a large
// table no longer keeps in the processor's caches. The index keeps positions,
// not keys: each place holds a key's 32-bit hash and the key's 1-based
// position in the owner's table, so that the keys stay where the owner keeps
// them (one buffer of texts, a list), a lookup reads one 8-byte place of a
// flat array, and a key is compared only when the hashes are equal. Open
// addressing with linear probing, a power-of-two number of places, at most
// half of them taken.
//
// The owner decides what a key is: it gives each key's hash, and a test that
// tells whether the key at a position is the one looked for.
//
//   KORPositionIndex index;
//   const std::uint32_t hash = KORPositionIndex::HashOf(key);
//   auto isKey = [&](std::uint32_t iPosition) { return keys[iPosition - 1] == key; };
//   if (index.Find(hash, isKey) == 0) {
//     keys.push_back(key);
//     index.Add(hash, static_cast<std::uint32_t>(keys.size()));
//   }
#ifndef KORPositionIndex_h
#define KORPositionIndex_h

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

class KORPositionIndex {
 public:
  using Hash = std::uint32_t;
  // 1-based; 0 stands for "no key".
  using Position = std::uint32_t;

  // The hash of a key given as text.
  [[nodiscard]] static Hash HashOf(std::string_view iKey) noexcept {
    return static_cast<Hash>(std::hash<std::string_view>()(iKey));
  }

  // Makes room for iKeys keys, so that adding that many never grows the
  // index (the places are allocated once).
  void Reserve(std::size_t iKeys) {
    std::size_t places = kFirstPlaces;
    while (places < 2 * iKeys) places *= 2;
    if (places > _places.size()) Rehash(places);
  }

  // The position of the key whose hash is iHash and for which
  // iIsKey(position) is true, or 0 when the index does not hold it.
  template <typename IsKey>
  [[nodiscard]] Position Find(Hash iHash, const IsKey& iIsKey) const {
    if (_places.empty()) return 0;
    return _places[PlaceOf(iHash, iIsKey)].position;
  }

  // Records that the key whose hash is iHash, which the index does not hold,
  // is at iPosition (not 0).
  void Add(Hash iHash, Position iPosition) {
    if (2 * (_count + 1) > _places.size()) Rehash(Grown());
    _places[FreePlaceOf(iHash)] = Place{iHash, iPosition};
    ++_count;
  }

  // The position of the key whose hash is iHash and for which
  // iIsKey(position) is true; when the index does not hold it, records that
  // it is at iNewPosition (not 0) and returns 0. One probe for both.
  template <typename IsKey>
  Position FindOrAdd(Hash iHash, const IsKey& iIsKey, Position iNewPosition) {
    if (2 * (_count + 1) > _places.size()) Rehash(Grown());
    Place& place = _places[PlaceOf(iHash, iIsKey)];
    if (place.position != 0) return place.position;
    place = Place{iHash, iNewPosition};
    ++_count;
    return 0;
  }

  // Starts fetching into the processor's caches the place where a lookup or
  // an addition of a key whose hash is iHash begins, so that it has arrived
  // when the key comes (a large index does not fit in the caches). Changes
  // nothing.
  void Prefetch(Hash iHash) const noexcept {
    if (!_places.empty()) __builtin_prefetch(&_places[iHash & (_places.size() - 1)]);
  }

  // How many keys the index holds.
  [[nodiscard]] std::size_t Size() const noexcept { return _count; }

  // Forgets every key and frees the places.
  void Clear() noexcept {
    std::vector<Place>().swap(_places);
    _count = 0;
  }

 private:
  struct Place {
    Hash hash;
    Position position;  // 0 for a free place
  };

  static constexpr std::size_t kFirstPlaces = 16;

  // The place of the key, or the free place where it would go. The index
  // has places, and at least one of them is free.
  template <typename IsKey>
  [[nodiscard]] std::size_t PlaceOf(Hash iHash, const IsKey& iIsKey) const {
    const std::size_t mask = _places.size() - 1;
    for (std::size_t place = iHash & mask;; place = (place + 1) & mask) {
      const Place& candidate = _places[place];
      if (candidate.position == 0) return place;
      if (candidate.hash == iHash && iIsKey(candidate.position)) return place;
    }
  }

  // The first free place from iHash's own.
  [[nodiscard]] std::size_t FreePlaceOf(Hash iHash) const noexcept {
    const std::size_t mask = _places.size() - 1;
    std::size_t place = iHash & mask;
    while (_places[place].position != 0) place = (place + 1) & mask;
    return place;
  }

  [[nodiscard]] std::size_t Grown() const noexcept {
    return _places.empty() ? kFirstPlaces : 2 * _places.size();
  }

  // Moves every key to a table of iPlaces places (a power of two).
  void Rehash(std::size_t iPlaces) {
    std::vector<Place> previous(iPlaces, Place{0, 0});
    previous.swap(_places);
    for (const Place& taken : previous) {
      if (taken.position != 0) _places[FreePlaceOf(taken.hash)] = taken;
    }
  }

  std::vector<Place> _places;
  std::size_t _count = 0;
};

#endif
