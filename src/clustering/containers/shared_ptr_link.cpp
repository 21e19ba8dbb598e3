#include "zul/clustering.h"

namespace zul::dax::types {

SharedPtrLink::SharedPtrLink() : previous_(this), next_(this) {}

SharedPtrLink::~SharedPtrLink() = default;

bool SharedPtrLink::IsReleaseable() const {
    return next_ == this;
}

int SharedPtrLink::RefCount() const {
    int count = 1;
    for (const SharedPtrLink* link = next_; link != this; link = link->next_)
        ++count;
    return count;
}

void SharedPtrLink::AddLink(SharedPtrLink* other) {
    if (other == this) return;
    // It may come from this very ring, even from the place where it is to go.
    other->RemoveLink();
    other->next_ = next_;
    next_->previous_ = other;
    other->previous_ = this;
    // cppcheck-suppress danglingLifetime ; that of Swap leaves the ring before it ends
    next_ = other;
}

void SharedPtrLink::RemoveLink() {
    previous_->next_ = next_;
    next_->previous_ = previous_;
    previous_ = next_ = this;
}

// A third link keeps the place of this one, so that neighbours change places as others do.
void SharedPtrLink::Swap(SharedPtrLink& other) {
    SharedPtrLink place;
    AddLink(&place);
    other.AddLink(this);
    place.AddLink(&other);
    place.RemoveLink();
}

}  // namespace zul::dax::types
