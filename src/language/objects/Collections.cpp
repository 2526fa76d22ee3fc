#include "language/objects/Arguments.h"
#include "language/objects/HeldItems.h"
#include "language/objects/OwnClasses.h"
#include "language/objects/Walk.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

namespace zn::language {

namespace {

struct Item {
    Text key; ///< folded; empty for none
    Value value;
};

/// Elements in an order, some of which have a key.
class Collection : public DispatchObject, public std::enable_shared_from_this<Collection> {
public:
    Text typeName() const override { return u"Collection"; }

    Value invoke(MemberCall& call) override
    {
        if (call.name.empty() || equalNoCase(call.name, u"Item"))
            return at(ArgumentList(call, {u"Index"}).required(0)).value;
        if (equalNoCase(call.name, u"Count"))
            return static_cast<std::int32_t>(m_items->size());
        if (equalNoCase(call.name, u"Add"))
            return add(ArgumentList(call, {u"Item", u"Key", u"Before", u"After"}));
        if (equalNoCase(call.name, u"Remove")) {
            const Item& item = at(ArgumentList(call, {u"Index"}).required(0));
            const auto place = placeOf(item);
            move(place, -1);
            m_byKey.erase(item.key);
            m_items->erase(place);
            return {};
        }
        if (equalNoCase(call.name, u"_NewEnum"))
            return walk();
        raise(error::memberMissing);
    }

private:
    using Items = std::vector<std::unique_ptr<Item>>;

    /// Stands before an item and stays there, whatever comes or goes before it.
    struct Place : Walk {
        explicit Place(std::shared_ptr<const Collection> walked)
            : collection(std::move(walked))
        {
        }

        bool next(Value& element) override
        {
            if (at >= collection->m_items->size())
                return false;
            element = (*collection->m_items)[at++]->value;
            return true;
        }

        std::shared_ptr<const Collection> collection;
        std::size_t at = 0;
    };

    Value walk()
    {
        std::erase_if(m_walks, [](const auto& other) { return other.expired(); });
        const auto place = std::make_shared<Place>(shared_from_this());
        m_walks.push_back(place);
        return Value(ObjectRef(place));
    }

    /// Before an item is taken from a place (-1) or put to it (1).
    void move(Items::const_iterator place, int by)
    {
        const auto index = static_cast<std::size_t>(place - m_items->cbegin());
        for (const auto& held : m_walks)
            if (const auto walk = held.lock(); walk && index < walk->at)
                walk->at += static_cast<std::size_t>(by);
    }

    const Item& at(const Value& index) const
    {
        if (const auto* key = index.get<Text>()) {
            const auto hit = m_byKey.find(foldCase(*key));
            if (hit == m_byKey.end())
                raise(error::invalidCall);
            return *hit->second;
        }
        const std::int32_t number = longOf(index);
        if (number < 1 || static_cast<std::size_t>(number) > m_items->size())
            raise(error::subscript);
        return *(*m_items)[static_cast<std::size_t>(number) - 1];
    }

    Items::iterator placeOf(const Item& item)
    {
        return std::ranges::find_if(*m_items, [&](const auto& other) { return other.get() == &item; });
    }

    Value add(const ArgumentList& given)
    {
        auto item = std::make_unique<Item>(Item{foldCase(given.text(1, {})), given.required(0)});
        if (m_byKey.contains(item->key))
            raise(error::keyInUse);
        auto place = m_items->end();
        if (given.has(2))
            place = placeOf(at(given.required(2)));
        else if (given.has(3))
            place = placeOf(at(given.required(3))) + 1;
        if (!item->key.empty())
            m_byKey.emplace(item->key, item.get());
        move(place, 1);
        m_items->insert(place, std::move(item));
        return {};
    }

    HeldItems<Items> m_items;
    std::unordered_map<Text, const Item*> m_byKey; ///< those that have a key
    std::vector<std::weak_ptr<Place>> m_walks;
};

/// Values by key, in the order in which the keys came.
class Dictionary : public DispatchObject {
public:
    Text typeName() const override { return u"Dictionary"; }

    Value invoke(MemberCall& call) override
    {
        const bool writes = call.use != MemberUse::Call;
        if (call.name.empty() || equalNoCase(call.name, u"Item"))
            return writes ? put(call) : item(ArgumentList(call, {u"Key"}).required(0));
        if (equalNoCase(call.name, u"Count"))
            return static_cast<std::int32_t>(m_items->size());
        if (equalNoCase(call.name, u"Exists"))
            return Value(m_places.contains(keyText(ArgumentList(call, {u"Key"}).required(0))));
        if (equalNoCase(call.name, u"Add"))
            return add(ArgumentList(call, {u"Key", u"Item"}));
        if (equalNoCase(call.name, u"Remove"))
            return remove(keyText(ArgumentList(call, {u"Key"}).required(0)));
        if (equalNoCase(call.name, u"RemoveAll")) {
            m_items->clear();
            m_places.clear();
            return {};
        }
        if (equalNoCase(call.name, u"CompareMode"))
            return compareMode(call);
        if (equalNoCase(call.name, u"Keys") || equalNoCase(call.name, u"_NewEnum"))
            return list(&Entry::key);
        if (equalNoCase(call.name, u"Items"))
            return list(&Entry::value);
        raise(error::memberMissing);
    }

private:
    struct Entry {
        Value key;
        Value value;
    };

    /// Keys of different types are different keys: 1 isn't "1".
    Text keyText(const Value& key) const
    {
        if (key.isArray())
            raise(error::invalidCall);
        if (const auto* text = key.get<Text>())
            return u"s" + (m_ignoreCase ? foldCase(*text) : *text);
        if (isObject(key))
            return u"o" + numberText(reinterpret_cast<std::intptr_t>(key.get<ObjectRef>()->get()));
        return u"n" + (isNull(key) ? Text() : textOf(key));
    }

    std::size_t placeOf(const Value& key)
    {
        const auto [hit, added] = m_places.emplace(keyText(key), m_items->size());
        if (added)
            m_items->push_back({key, {}});
        return hit->second;
    }

    /// Asking for a key that isn't there puts it there.
    Value item(const Value& key) { return (*m_items)[placeOf(key)].value; }

    Value put(const MemberCall& call)
    {
        if (call.arguments.size() != 2)
            raise(error::argumentCount);
        (*m_items)[placeOf(call.arguments[0])].value = call.arguments[1];
        return {};
    }

    Value add(const ArgumentList& given)
    {
        if (m_places.contains(keyText(given.required(0))))
            raise(error::keyInUse);
        (*m_items)[placeOf(given.required(0))].value = given.required(1);
        return {};
    }

    Value remove(const Text& key)
    {
        const auto hit = m_places.find(key);
        if (hit == m_places.end())
            raise(error::invalidCall);
        const std::size_t place = hit->second;
        m_items->erase(m_items->begin() + static_cast<std::ptrdiff_t>(place));
        m_places.erase(hit);
        for (auto& [other, index] : m_places)
            index -= index > place ? 1 : 0;
        return {};
    }

    Value compareMode(const MemberCall& call)
    {
        if (call.use == MemberUse::Call)
            return std::int32_t(m_ignoreCase ? 1 : 0);
        if (!m_items->empty())
            raise(error::invalidCall);
        m_ignoreCase = longOf(call.arguments.back()) == 1;
        return {};
    }

    Value list(Value Entry::*part) const
    {
        std::vector<Value> values;
        for (const Entry& entry : *m_items)
            values.push_back(entry.*part);
        return Value::arrayOf(std::move(values));
    }

    HeldItems<std::vector<Entry>> m_items;
    std::unordered_map<Text, std::size_t> m_places;
    bool m_ignoreCase = false;
};

} // namespace

DispatchRef makeCollection() { return std::make_shared<Collection>(); }

DispatchRef makeDictionary() { return std::make_shared<Dictionary>(); }

} // namespace zn::language
