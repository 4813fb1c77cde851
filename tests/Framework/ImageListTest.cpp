// SPDX-License-Identifier: MIT
#include "Framework/windows/ImageList.h"

#include <gtest/gtest.h>
#include <stdexcept>

TEST(ImageList, HasOneSwatchForEachColour) {
    CImageList images(16, 8);
    EXPECT_EQ(16, images.Width());
    EXPECT_EQ(8, images.Height());
    EXPECT_EQ(0, images.GetImageCount());
    EXPECT_EQ(0, images.Add(0x0000FF));
    EXPECT_EQ(1, images.Add(0xFF0000));
    EXPECT_EQ(0, images.Add(0x0000FF));
    EXPECT_EQ(1, images.Add(images.ColorAt(1)));
    EXPECT_EQ(2, images.GetImageCount());
    EXPECT_EQ(0x0000FFU, images.ColorAt(0));
    EXPECT_EQ(0xFF0000U, images.ColorAt(1));
}

TEST(ImageList, PositionsThatThereAreNotThrow) {
    CImageList images;
    images.Add(0);
    EXPECT_THROW(images.ColorAt(1), std::out_of_range);
    EXPECT_THROW(images.ColorAt(-1), std::out_of_range);
}

TEST(ImageList, CopiesAreIndependent) {
    CImageList images(16, 16);
    images.Add(1);
    CImageList copy = images;
    EXPECT_EQ(1, copy.Add(2));
    EXPECT_EQ(1, images.Add(3));
    EXPECT_EQ(2U, copy.ColorAt(1));
}
