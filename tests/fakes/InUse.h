#pragma once

namespace fakes {

/// An implementation of `Interface` that is in use for its own life: `Set` puts one in place and returns the one before.
template <typename Interface, auto Set>
class InUse : public Interface {
  public:
    InUse(const InUse&) = delete;
    InUse& operator=(const InUse&) = delete;

  protected:
    InUse() : before_(Set(this)) {}

    ~InUse() override { Set(before_); }

  private:
    Interface* before_;
};

} // namespace fakes
