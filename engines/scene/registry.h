#ifndef ZANT_ENGINES_SCENE_REGISTRY_H
#define ZANT_ENGINES_SCENE_REGISTRY_H

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace Zant::Engine {

/// What is alive of one kind, by numbers from 1 that are never used twice. Any thread may call any operation.
///
/// An item that has been taken out lives on for as long as somebody who found it holds it. No item ends while the
/// registry is locked.
template <class Item>
class Registry {
public:
    using Pointer = std::shared_ptr<Item>;

    /// A number for an item that is to know its own.
    uint64_t reserve() { return ++last_; }
    void add(uint64_t number, Pointer item) {
        const std::lock_guard lock(mutex_);
        items_.emplace(number, std::move(item));
    }
    /// @return the item's number.
    uint64_t add(Pointer item) {
        const uint64_t number = reserve();
        add(number, std::move(item));
        return number;
    }

    /// Null when there is no such item, or no longer.
    Pointer find(uint64_t number) const {
        const std::lock_guard lock(mutex_);
        const auto found = items_.find(number);
        return found == items_.end() ? nullptr : found->second;
    }
    /// Takes an item out; null as in find().
    Pointer take(uint64_t number) {
        const std::lock_guard lock(mutex_);
        const auto node = items_.extract(number);
        return node ? node.mapped() : nullptr;
    }
    /// Takes out every item that meets the condition, in the order of their numbers.
    template <class Condition>
    std::vector<Pointer> takeIf(const Condition& condition) {
        std::vector<Pointer> taken;
        const std::lock_guard lock(mutex_);
        for (auto item = items_.begin(); item != items_.end();) {
            const bool isMeant = condition(*item->second);
            if (isMeant) taken.push_back(item->second);
            item = isMeant ? items_.erase(item) : std::next(item);
        }
        return taken;
    }
    /// Every item.
    std::vector<Pointer> all() const {
        std::vector<Pointer> found;
        const std::lock_guard lock(mutex_);
        for (const auto& [number, item] : items_)
            found.push_back(item);
        return found;
    }
    /// Takes out every item; they end with the answer.
    std::vector<Pointer> takeAll() {
        return takeIf([](const Item&) { return true; });
    }

    size_t size() const {
        const std::lock_guard lock(mutex_);
        return items_.size();
    }

private:
    mutable std::mutex mutex_;
    std::map<uint64_t, Pointer> items_;
    std::atomic<uint64_t> last_{0};
};

}  // namespace Zant::Engine

#endif
