#pragma once

class CObject;

// What a class can be made from at run time, as a document template does.
struct CRuntimeClass {
    const char* m_lpszClassName;
    CObject* (*m_Create)();  // a new object, owned by the caller

    CObject* CreateObject() const { return m_Create(); }
};

// Base of everything that is handled by pointer. Not copied.
class CObject {
public:
    CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject() = default;
};

namespace vesk {

// The run-time class of T, which has a constructor without arguments. One object per name and
// type; pass the class's own name.
template <class T>
const CRuntimeClass* RuntimeClass(const char* name) {
    static const CRuntimeClass runtimeClass{name, []() -> CObject* { return new T; }};
    return &runtimeClass;
}

}  // namespace vesk
