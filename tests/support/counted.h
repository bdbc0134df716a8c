#pragma once

#include "pellum/object/object.h"

namespace TestSupport {

/// A counted object that tells how many of its kind are alive.
class Counted : public Pellum::ObjectImpl {
public:
    Counted() { ++s_alive; }

    Counted(const Counted& other) : Object(other), ObjectImpl(other) { ++s_alive; }

    Counted& operator=(const Counted&) = delete;

    ~Counted() override { --s_alive; }

    static int Alive() { return s_alive; }

private:
    static inline std::atomic<int> s_alive = 0;
};

} // namespace TestSupport
