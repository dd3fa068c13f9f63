#pragma once

// How other objects hold a dialog without knowing its class.
class IReferenceCounted {
public:
    virtual void Retain() = 0;
    virtual void Release() = 0;

protected:
    ~IReferenceCounted() = default;
};
