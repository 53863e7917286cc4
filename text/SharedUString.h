#pragma once

#include "foundation/SharingLink.h"
#include "text/CopiedUString.h"

// A body and the link that counts the holders of its buffer. Short texts are copied, long ones shared; the
// last holder frees the buffer. A body that is not alone is never written to.
template <class E>
class SharedUStringBody {
protected:
    SharedUStringBody() = default;
    explicit SharedUStringBody(UStringRef<E> const& view) : m_body(view) {}
    SharedUStringBody(SharedUStringBody const& other) { ShareFrom(other); }
    SharedUStringBody(SharedUStringBody&& other) noexcept { TakeFrom(other); }
    // The body frees by itself what it was left.
    ~SharedUStringBody() { LeaveHolders(); }

    // Frees the text if no other holder is left, forgets it otherwise. Empty and alone afterwards.
    void DisposeOrUnlink() noexcept {
        LeaveHolders();
        m_body.Dispose();
    }

    // Joins the holders of `other`. This body must be empty and alone.
    void ShareFrom(SharedUStringBody const& other) {
        SharingLink link(other.m_link);
        if (other.m_body.IsInline()) {
            m_body.Reset(other.m_body.Encoding(), 0, 0);
            m_body.AppendInPlace(other.m_body.Ref());
        } else {
            m_body.ShareBufferOf(other.m_body);
        }
        m_link.swap(link);
    }

    // Takes text and link, leaving `other` empty and alone. This body must be empty and alone.
    void TakeFrom(SharedUStringBody& other) noexcept {
        bool const shared = other.m_body.IsShared();
        m_body.Seize(other.m_body);
        m_body.SetShared(shared);
        m_link.swap(other.m_link);
    }

    UStringBody<E> m_body;
    SharingLink m_link;

private:
    // Afterwards the body holds nothing but what is this object's alone to free. A lone text costs no write.
    void LeaveHolders() noexcept {
        if (!m_link.Leave())
            m_body.Forget();
        else if (m_body.IsShared())
            m_body.SetShared(false);
    }
};

// Owning string whose copies share one heap buffer. Copying marks the source too, although it is const; two
// threads may each use a copy of their own. It exists for UTF8, UTF16 and UTF32.
template <class E>
class SharedUString : private SharedUStringBody<E> {
    static_assert(std::same_as<E, UTF8> || std::same_as<E, UTF16> || std::same_as<E, UTF32>,
                  "SharedUString exists for UTF8, UTF16 and UTF32");

public:
    using TextEncoding = E;
    using Unit = typename E::Unit;
    using iterator = Unit const*;
    using const_iterator = Unit const*;
    using value_type = Unit;

    SharedUString() = default;
    SharedUString(UStringRef<E> const& view) : SharedUStringBody<E>(view) {}
    // Takes the text of `text`, which is left empty.
    SharedUString(AutoUString<E>& text) noexcept { this->m_body.Seize(text.Get()); }
    SharedUString(AutoUString<E>&& text) noexcept { this->m_body.Seize(text.Get()); }
    SharedUString(SharedUString const& other) = default;
    SharedUString(SharedUString&& other) noexcept = default;
    ~SharedUString() = default;

    // The old text goes when nothing can fail any more.
    SharedUString& operator=(SharedUString const& other) {
        SharedUString copy(other);
        return *this = std::move(copy);
    }
    SharedUString& operator=(SharedUString&& other) noexcept {
        if (this == &other) return *this;
        this->DisposeOrUnlink();
        this->TakeFrom(other);
        return *this;
    }
    SharedUString& operator=(CopiedUString<E> const& text) { return *this = text.Ref(); }
    SharedUString& operator=(UStringRef<E> const& view) {
        RefToBody(view);
        return *this;
    }
    SharedUString& operator=(AutoUString<E>& text) noexcept {
        this->DisposeOrUnlink();
        this->m_body.Seize(text.Get());
        return *this;
    }
    SharedUString& operator=(AutoUString<E>&& text) noexcept { return *this = text; }

    Unit const* begin() const { return this->m_body.begin(); }
    Unit const* end() const { return this->m_body.end(); }
    bool empty() const { return this->m_body.empty(); }
    std::size_t SizeInUnits() const { return this->m_body.SizeInUnits(); }
    std::size_t SizeInBytes() const { return SizeInUnits() * sizeof(Unit); }
    std::size_t CapacityInUnits() const { return this->m_body.CapacityInUnits(); }
    E Encoding() const { return this->m_body.Encoding(); }
    UStringRef<E> Ref() const { return this->m_body.Ref(); }
    operator UStringRef<E>() const { return Ref(); }
    operator ConstData() const requires std::same_as<Unit, unsigned char> { return Ref(); }
    // Unchecked.
    Unit const& operator[](std::size_t index) const { return begin()[index]; }

    // True when no other string shares this one's link.
    bool Alone() const { return this->m_link.Alone(); }

    // Assigns a copy of the view. The copy is complete before the old text is given up.
    void RefToBody(UStringRef<E> const& view) {
        UStringBody<E> copy(view);
        this->DisposeOrUnlink();
        this->m_body.Seize(copy);
    }
    void clear() noexcept { this->DisposeOrUnlink(); }

    // Always builds a new body, even when this string is alone and has room: no buffer that another holder
    // may read is ever written to. So growing a long text by single units is costly; collect it elsewhere
    // first. The view may point into this text. An empty view changes nothing.
    SharedUString& operator+=(UStringRef<E> const& view) {
        if (view.empty()) return *this;
        UStringBody<E> grown = this->m_body.Grown(view);
        this->DisposeOrUnlink();
        this->m_body.Seize(grown);
        return *this;
    }
    SharedUString& operator+=(Unit unit) { return *this += UStringRef<E>(Encoding(), &unit, &unit + 1); }
};

extern template class SharedUString<UTF8>;
extern template class SharedUString<UTF16>;
extern template class SharedUString<UTF32>;
