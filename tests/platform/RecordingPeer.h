#pragma once

#include <vector>

#include "platform/WindowPeer.h"

// Keeps what its window told it, and how many of its kind are alive.
class RecordingPeer : public vesk::WindowPeer {
public:
    explicit RecordingPeer(int* alive = nullptr) : m_Alive(alive) {
        if (m_Alive) ++*m_Alive;
    }
    ~RecordingPeer() override {
        if (m_Alive) --*m_Alive;
    }
    RecordingPeer(const RecordingPeer&) = delete;
    RecordingPeer& operator=(const RecordingPeer&) = delete;

    void Changed(vesk::Aspect aspect) override { m_Changes.push_back(aspect); }
    void Invalidated(const CRect& rect) override { m_Invalid.push_back(rect); }
    CPoint ScreenOrigin() const override { return {1000, 500}; }

    std::vector<vesk::Aspect> m_Changes;
    std::vector<CRect> m_Invalid;

private:
    int* m_Alive;
};
