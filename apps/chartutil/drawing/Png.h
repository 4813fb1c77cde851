#pragma once

#include <string>

// The part of pictures that needs Qt: its definitions are in qt/, or in noqt/ for a build without it.

/// Whether this program can make PNG pictures.
bool CanRenderPng();

/// The PNG file of an SVG text in its own size. Empty when it cannot be made.
std::string RenderPng(const std::string& svg, int width, int height);
