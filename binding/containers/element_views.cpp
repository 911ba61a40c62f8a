// Remembers the views of each vector by their places in its storage.
#include "binding/containers/element_views.h"

#include "binding/runtime/reference.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace containers {

namespace {

struct Watched {
    std::byte* data = nullptr;
    std::size_t bytes = 0;
    std::vector<runtime::Reference> views;
    std::vector<SwigPyObject*> keeping; // views that keep the vector's object alive: held, they would never end
    std::size_t most_before_pruning = 16;
};

std::unordered_map<void const*, Watched>& watched_vectors() {
    static auto* const vectors = new std::unordered_map<void const*, Watched>; // views may end after static objects
    return *vectors;
}

SwigPyObject* handle_of(runtime::Reference const& view) {
    return reinterpret_cast<SwigPyObject*>(view.get());
}

void forget_view(SwigPyObject* view) {
    for (auto& [vector, watched] : watched_vectors())
        std::erase(watched.keeping, view);
}

void add(Watched& watched, SwigPyObject* view) {
    if (runtime::is_view(view)) {
        runtime::view_ended = forget_view;
        watched.keeping.push_back(view);
        return;
    }
    if (watched.views.size() >= watched.most_before_pruning) {
        std::erase_if(watched.views, [](runtime::Reference const& other) { return Py_REFCNT(other.get()) == 1; });
        watched.most_before_pruning = 2 * watched.views.size() + 16;
    }
    watched.views.push_back(runtime::Reference::share(reinterpret_cast<PyObject*>(view)));
}

void move_views(Watched& watched, std::byte* data, std::size_t bytes) {
    auto const move = [&](void*& pointer) {
        if (!pointer)
            return;
        std::size_t const place = static_cast<std::size_t>(static_cast<std::byte*>(pointer) - watched.data);
        pointer = place < bytes ? data + place : nullptr;
    };
    for (auto const& view : watched.views)
        move(handle_of(view)->ptr);
    for (SwigPyObject* const view : watched.keeping)
        move(view->ptr);
    watched.data = data;
    watched.bytes = bytes;
}

} // namespace

void watch(Storage const& storage, SwigPyObject* view) {
    Watched& watched = watched_vectors()[storage.vector];
    move_views(watched, static_cast<std::byte*>(storage.data), storage.bytes);
    add(watched, view);
}

void watch_inside(SwigPyObject* view) {
    auto* const pointer = static_cast<std::byte*>(view->ptr);
    for (auto& [vector, watched] : watched_vectors())
        if (pointer >= watched.data && pointer < watched.data + watched.bytes)
            return add(watched, view);
}

void follow(Storage const& storage) {
    auto const found = watched_vectors().find(storage.vector);
    if (found != watched_vectors().end())
        move_views(found->second, static_cast<std::byte*>(storage.data), storage.bytes);
}

void exchange(void const* vector, void const* other) {
    auto& vectors = watched_vectors();
    if (vectors.contains(vector) || vectors.contains(other))
        std::swap(vectors[vector], vectors[other]);
}

void forget(void const* vector) {
    auto& vectors = watched_vectors();
    auto const found = vectors.find(vector);
    if (found == vectors.end())
        return;
    move_views(found->second, nullptr, 0);
    vectors.erase(found);
}

} // namespace containers
