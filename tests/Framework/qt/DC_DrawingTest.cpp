// SPDX-License-Identifier: MIT
// What is drawn on the context of a request to draw.

#include "Framework/device/DC.h"
#include "Framework/windows/Button.h"
#include "tests/support/EventLoop.h"

#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

namespace {

constexpr COLORREF kRed = 0x0000FF, kGreen = 0x00FF00, kBlue = 0xFF0000;

struct DrawnButton : CButton {
    std::function<void(CDC& dc, const DRAWITEMSTRUCT& item)> draw;

    void DrawItem(LPDRAWITEMSTRUCT item) override {
        CDC dc;
        dc.Attach(item->hDC);
        struct Detaching {
            CDC& dc;
            ~Detaching() { dc.Detach(); }
        } const detaching{dc};
        draw(dc, *item);
    }
};

class DC_Drawing : public ::testing::Test {
protected:
    DC_Drawing() {
        EXPECT_TRUE(m_button->Create(L"caption"));
        Widget().resize(40, 20);
    }

    QWidget& Widget() { return *static_cast<QWidget*>(m_button->NativeHandle()); }

    QImage Drawn(const std::function<void(CDC& dc, const DRAWITEMSTRUCT& item)>& draw) {
        m_button->draw = [&](CDC& dc, const DRAWITEMSTRUCT& item) {
            dc.FillRect(item.rcItem, CBrush(kGreen));
            draw(dc, item);
        };
        return Widget().grab().toImage();
    }

    static COLORREF At(const QImage& picture, int x, int y) {
        const QColor color = picture.pixelColor(x, y);
        return static_cast<COLORREF>(color.red() | color.green() << 8 | color.blue() << 16);
    }

    // The pixels of that colour, as "left top right bottom" of what holds them all, and how many they are.
    static std::string Found(const QImage& picture, COLORREF color) {
        QRect all;
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (At(picture, x, y) == color) {
                    all |= QRect(x, y, 1, 1);
                    ++count;
                }
        return count == 0 ? "none"
                          : std::to_string(all.left()) + ' ' + std::to_string(all.top()) + ' ' +
                                std::to_string(all.right() + 1) + ' ' + std::to_string(all.bottom() + 1) +
                                ": " + std::to_string(count);
    }

    EventLoop m_loop;
    std::unique_ptr<DrawnButton> m_button = std::make_unique<DrawnButton>();
};

} // namespace

TEST_F(DC_Drawing, FillsRectanglesWithoutTheirRightAndBottomEdge) {
    EXPECT_EQ("3 4 13 9: 50", Found(Drawn([](CDC& dc, const DRAWITEMSTRUCT&) {
                                        EXPECT_TRUE(dc.FillRect({3, 4, 13, 9}, CBrush(kRed)));
                                    }),
                                    kRed));
}

TEST_F(DC_Drawing, FramesThemByTheirOutermostPixels) {
    EXPECT_EQ("3 4 13 9: 26", Found(Drawn([](CDC& dc, const DRAWITEMSTRUCT&) {
                                        EXPECT_TRUE(dc.FrameRect({3, 4, 13, 9}, CBrush(kRed)));
                                    }),
                                    kRed));
    EXPECT_EQ("3 4 4 5: 1", Found(Drawn([](CDC& dc, const DRAWITEMSTRUCT&) {
                                      dc.FrameRect({3, 4, 4, 5}, CBrush(kRed));
                                  }),
                                  kRed));
}

TEST_F(DC_Drawing, EmptyRectanglesAndDeadBrushesDrawNothing) {
    EXPECT_EQ("none",
              Found(Drawn([](CDC& dc, const DRAWITEMSTRUCT&) {
                        const CBrush red(kRed);
                        for (const RECT& empty : {RECT{5, 5, 5, 9}, RECT{5, 5, 9, 5}, RECT{9, 9, 5, 5}}) {
                            dc.FillRect(empty, red);
                            dc.FrameRect(empty, red);
                        }
                        CBrush deleted(kRed);
                        deleted.DeleteObject();
                        EXPECT_FALSE(dc.FillRect({0, 0, 9, 9}, deleted));
                        EXPECT_FALSE(dc.FrameRect({0, 0, 9, 9}, deleted));
                        EXPECT_FALSE(dc.FillRect({0, 0, 9, 9}, CBrush()));
                    }),
                    kRed));
}

TEST_F(DC_Drawing, WritesInItsColoursWhereItMeasures) {
    CSize size;
    const QImage picture = Drawn([&](CDC& dc, const DRAWITEMSTRUCT&) {
        EXPECT_EQ(0U, dc.SetTextColor(kBlue));
        EXPECT_EQ(0xFFFFFFU, dc.SetBkColor(kRed));
        EXPECT_EQ(kBlue, dc.SetTextColor(kBlue));
        EXPECT_EQ(kRed, dc.SetBkColor(kRed));
        size = dc.GetTextExtent(L"||||");
        EXPECT_TRUE(dc.TextOutW(2, 1, L"||||"));
        EXPECT_TRUE(dc.TextOutW(2, 1, L""));
    });
    ASSERT_GT(size.cx, 4);
    ASSERT_GT(size.cy, 4);
    int inside = 0, bluish = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const bool isText = x >= 2 && x < 2 + size.cx && y >= 1 && y < 1 + size.cy;
            if (!isText) continue;
            ++inside;
            EXPECT_NE(kGreen, At(picture, x, y)) << x << ' ' << y; // the background is filled
            bluish += (At(picture, x, y) >> 16) > 64 ? 1 : 0;
        }
    EXPECT_GT(bluish, 4);
    EXPECT_LT(bluish, inside);
}

TEST_F(DC_Drawing, ASelectedFontDoesNotPartMeasuringFromWriting) {
    CSize before, after;
    Drawn([&](CDC& dc, const DRAWITEMSTRUCT&) {
        before = dc.GetTextExtent(L"text");
        CFont font;
        ASSERT_TRUE(font.CreateFontW(100, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES,
                                     PROOF_QUALITY, 0, L"Liberation Sans"));
        CGdiObject* const old = CDC::SelectGdiObject(dc.m_hDC, font.m_hObject);
        after = dc.GetTextExtent(L"text");
        CDC::SelectGdiObject(dc.m_hDC, old->m_hObject);
    });
    EXPECT_GT(before.cx, 0);
    EXPECT_EQ(before, after);
}

TEST_F(DC_Drawing, ARequestTellsWhatIsToBeDrawn) {
    Drawn([&](CDC&, const DRAWITEMSTRUCT& item) {
        EXPECT_EQ(ODT_BUTTON, item.CtlType);
        EXPECT_EQ(ODA_DRAWENTIRE, item.itemAction);
        EXPECT_EQ(0U, item.itemState);
        EXPECT_EQ(m_button->NativeHandle(), static_cast<void*>(item.hwndItem));
        EXPECT_EQ(0, item.rcItem.left + item.rcItem.top);
        EXPECT_EQ(40, item.rcItem.right);
        EXPECT_EQ(20, item.rcItem.bottom);
    });
    m_button->EnableWindow(false);
    Drawn([&](CDC&, const DRAWITEMSTRUCT& item) { EXPECT_EQ(ODS_DISABLED, item.itemState); });
}

TEST_F(DC_Drawing, ItsContextGoesWithTheRequest) {
    HDC kept = nullptr;
    Drawn([&](CDC&, const DRAWITEMSTRUCT& item) { kept = item.hDC; });
    CDC late;
    late.Attach(kept);
    EXPECT_FALSE(late.FillRect({0, 0, 9, 9}, CBrush(kRed)));
    EXPECT_FALSE(late.TextOutW(0, 0, L"late"));
    late.Detach();
}

TEST_F(DC_Drawing, AnExceptionEndsThere) {
    int calls = 0;
    const auto draw = [&](CDC&, const DRAWITEMSTRUCT&) {
        ++calls;
        throw std::runtime_error("of a handler");
    };
    Drawn(draw);
    Drawn(draw);
    EXPECT_EQ(2, calls);
}

TEST_F(DC_Drawing, TheButtonMayBeDeletedByIt) {
    bool isDrawn = false;
    Drawn([&](CDC& dc, const DRAWITEMSTRUCT& item) {
        m_button.reset();
        isDrawn = dc.FillRect(item.rcItem, CBrush(kRed));
    });
    EXPECT_TRUE(isDrawn);
    m_loop.RunWhatWaits();
}

TEST_F(DC_Drawing, ADeletedContextDrawsNoMore) {
    Drawn([&](CDC& dc, const DRAWITEMSTRUCT& item) {
        ASSERT_TRUE(::DeleteDC(item.hDC));
        EXPECT_FALSE(dc.FillRect(item.rcItem, CBrush(kRed)));
    });
}
