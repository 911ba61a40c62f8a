// Copying and scaling of images.

#include "reference/hyxOSG/capture/image_pixels.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <type_traits>

namespace hyxOSG {
namespace {

/// Where in a pixel of this format red, green and blue lie.
struct ByteOrder {
    int red;
    int green;
    int blue;
    int bytes;
    int alpha = -1; ///< none
};

ByteOrder byteOrder(osg::Image const& image) {
    if (image.getDataType() == GL_UNSIGNED_BYTE && image.r() == 1) {
        switch (image.getPixelFormat()) {
        case GL_RGB:
            return {0, 1, 2, 3};
        case GL_RGBA:
            return {0, 1, 2, 4, 3};
        case GL_BGR:
            return {2, 1, 0, 3};
        case GL_BGRA:
            return {2, 1, 0, 4, 3};
        case GL_LUMINANCE:
            return {0, 0, 0, 1};
        default:
            break;
        }
    }
    return {0, 0, 0, 0};
}

unsigned char toByte(float value) {
    return static_cast<unsigned char>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255));
}

/// Rows of `channels` bytes a pixel: 3, or 4 with alpha.
void copyRow(osg::Image const& image, unsigned row, ByteOrder const& order, int channels, unsigned char* to) {
    unsigned const width = static_cast<unsigned>(image.s());
    unsigned char const* from = image.data(0, row);
    if (order.bytes == channels && order.red == 0) {
        std::memcpy(to, from, std::size_t(channels) * width);
        return;
    }
    for (unsigned x = 0; x < width; ++x, to += channels) {
        if (order.bytes > 0) {
            to[0] = from[order.red];
            to[1] = from[order.green];
            to[2] = from[order.blue];
            if (channels == 4)
                to[3] = order.alpha >= 0 ? from[order.alpha] : 255;
            from += order.bytes;
        } else {
            osg::Vec4 const color = image.getColor(x, row);
            to[0] = toByte(color.r());
            to[1] = toByte(color.g());
            to[2] = toByte(color.b());
            if (channels == 4)
                to[3] = toByte(color.a());
        }
    }
}

/// One pixel of a scaled row: the source pixels that it covers and their weights, which sum to one.
struct Share {
    unsigned first;
    std::vector<float> weights;
};

std::vector<Share> shares(unsigned from, unsigned to) {
    std::vector<Share> result;
    double const step = double(from) / to;
    for (unsigned i = 0; i < to; ++i) {
        // A tent as wide as the larger of the two pixels: mean when shrinking, interpolation when enlarging.
        double const center = (i + 0.5) * step - 0.5;
        double const reach = std::max(step, 1.0);
        int const first = static_cast<int>(std::ceil(center - reach + 1e-9));
        int const last = static_cast<int>(std::floor(center + reach - 1e-9));
        int const low = std::clamp(first, 0, int(from) - 1);
        int const high = std::clamp(last, 0, int(from) - 1);
        Share share{static_cast<unsigned>(low), std::vector<float>(static_cast<std::size_t>(high - low + 1))};
        double sum = 0;
        for (int k = first; k <= last; ++k) {
            sum += 1 - std::abs(k - center) / reach;
        }
        for (int k = first; k <= last; ++k) {
            share.weights[static_cast<std::size_t>(std::clamp(k, low, high) - low)] +=
                static_cast<float>((1 - std::abs(k - center) / reach) / sum);
        }
        result.push_back(std::move(share));
    }
    return result;
}

/// Scales along one direction of `lines` lines: pixel i of line j is at `j * lineStride + i * stride`, `channels`
/// values each.
template <class From, class To>
void scaleLines(From const* from, To* to, std::vector<Share> const& plan, std::size_t lines, std::size_t fromStride,
                std::size_t fromLine, std::size_t toStride, std::size_t toLine, int channels) {
    for (std::size_t line = 0; line < lines; ++line) {
        for (std::size_t i = 0; i < plan.size(); ++i) {
            for (int channel = 0; channel < channels; ++channel) {
                From const* source = from + line * fromLine + plan[i].first * fromStride + channel;
                float sum = 0;
                for (float weight : plan[i].weights) {
                    sum += weight * float(*source);
                    source += fromStride;
                }
                To& value = to[line * toLine + i * toStride + channel];
                value = std::is_same_v<To, float> ? To(sum) : To(std::lround(sum));
            }
        }
    }
}

/// Rows of bytes in the size of the image.
void copyRows(osg::Image const& image, bool upperFirst, int channels, unsigned char* to) {
    ByteOrder const order = byteOrder(image);
    bool const reverse = upperFirst != (image.getOrigin() == osg::Image::TOP_LEFT);
    unsigned const height = unsigned(image.t());
    for (unsigned row = 0; row < height; ++row, to += std::size_t(channels) * image.s()) {
        copyRow(image, reverse ? height - 1 - row : row, order, channels, to);
    }
}

void copyScaled(osg::Image const* image, unsigned width, unsigned height, bool upperFirst, int channels,
                unsigned char* to) {
    unsigned const fromWidth = unsigned(image->s());
    unsigned const fromHeight = unsigned(image->t());
    if (fromWidth == width && fromHeight == height) {
        copyRows(*image, upperFirst, channels, to);
        return;
    }
    std::vector<unsigned char> rows(std::size_t(channels) * fromWidth * fromHeight);
    copyRows(*image, upperFirst, channels, rows.data());
    auto const pixel = std::size_t(channels);
    std::size_t const fromLine = std::size_t(channels) * fromWidth;
    std::size_t const line = std::size_t(channels) * width;
    std::vector<float> wide(line * fromHeight);
    scaleLines(rows.data(), wide.data(), shares(fromWidth, width), fromHeight, pixel, fromLine, pixel, line, channels);
    scaleLines(wide.data(), to, shares(fromHeight, height), width, line, pixel, line, pixel, channels);
}

/// What was drawn over (0, 0, 0, 0) has its colour in the share of its alpha; films want the whole.
void divideByAlpha(osg::Image& image) {
    unsigned char* pixel = image.data();
    for (unsigned char const* const end = pixel + image.getTotalSizeInBytes(); pixel != end; pixel += 4)
        for (int i = 0; i < 3 && pixel[3] > 0 && pixel[3] < 255; ++i)
            pixel[i] = static_cast<unsigned char>(std::min(255, (pixel[i] * 255 + pixel[3] / 2) / pixel[3]));
}

} // namespace

void requirePixels(osg::Image const* image) {
    if (!image || !image->data() || image->s() <= 0 || image->t() <= 0) {
        throw std::invalid_argument("the image holds no pixels: pass one that was read or allocated");
    }
}

void copyPixels(osg::Image const* image, unsigned width, unsigned height, bool alpha,
                std::vector<unsigned char>& pixels) {
    requirePixels(image);
    int const channels = alpha ? 4 : 3;
    pixels.resize(std::size_t(channels) * width * height);
    copyScaled(image, width, height, true, channels, pixels.data());
}

void copyImage(osg::Image const* image, unsigned width, unsigned height, bool alpha, osg::Image& copy) {
    requirePixels(image);
    copy.allocateImage(int(width), int(height), 1, alpha ? GL_RGBA : GL_RGB, GL_UNSIGNED_BYTE, 1);
    copyScaled(image, width, height, false, alpha ? 4 : 3, copy.data());
    if (alpha)
        divideByAlpha(copy);
}

} // namespace hyxOSG
