#include "ShadowBlur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <thread>
#include <vector>

namespace zd {

namespace {

constexpr int kPasses = 3;

// Radii of three box blurs whose sum of variances is sigma² (the usual construction:
// boxes of two neighbouring odd widths, as many of each as gets closest).
std::array<int, kPasses> boxRadii(double sigma) {
    std::array<int, kPasses> radii{};
    if (!(sigma > 0.2))
        return radii;
    const double n = kPasses;
    const double ideal = std::sqrt(12.0 * sigma * sigma / n + 1.0);
    int lower = static_cast<int>(std::floor(ideal));
    if (lower % 2 == 0)
        --lower;
    const int upper = lower + 2;
    const double mIdeal = (12.0 * sigma * sigma - n * lower * lower - 4.0 * n * lower - 3.0 * n) /
                          (-4.0 * lower - 4.0);
    const int m = static_cast<int>(std::lround(mIdeal));
    for (int i = 0; i < kPasses; ++i)
        radii[static_cast<std::size_t>(i)] = ((i < m ? lower : upper) - 1) / 2;
    return radii;
}

// 16.16 reciprocal of a box's width: (sum * mul + half) >> 16 is the rounded mean. The product
// is about mean × 2^16, so it fits 32 bits whatever the radius, and the loops vectorise.
std::uint32_t reciprocal(int radius) {
    return (65536u + static_cast<std::uint32_t>(radius)) /
           static_cast<std::uint32_t>(2 * radius + 1);
}
constexpr std::uint32_t kHalf = 1u << 15;

// One horizontal box pass over one row; outside the row counts as zero.
void boxRow(std::uint8_t* row, int width, int radius, std::vector<std::uint8_t>& scratch) {
    if (radius <= 0)
        return;
    scratch.assign(row, row + width);
    const std::uint32_t mul = reciprocal(radius);
    std::uint32_t sum = 0;
    for (int x = 0; x < std::min(radius, width); ++x)
        sum += scratch[static_cast<std::size_t>(x)];
    for (int x = 0; x < width; ++x) {
        const int add = x + radius;
        const int drop = x - radius - 1;
        if (add < width)
            sum += scratch[static_cast<std::size_t>(add)];
        if (drop >= 0)
            sum -= scratch[static_cast<std::size_t>(drop)];
        row[x] = static_cast<std::uint8_t>(std::min(255u, (sum * mul + kHalf) >> 16));
    }
}

// One vertical box pass for columns [x0, x1): src to dst, walking rows in memory order.
void boxColumns(const std::uint8_t* src, std::uint8_t* dst, int height, std::size_t stride, int x0,
                int x1, int radius) {
    const auto cols = static_cast<std::size_t>(x1 - x0);
    if (radius <= 0) {
        for (int y = 0; y < height; ++y)
            std::memcpy(dst + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x0),
                        src + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x0),
                        cols);
        return;
    }
    const std::uint32_t mul = reciprocal(radius);
    std::vector<std::uint32_t> sums(cols, 0);
    auto rowAt = [&](int y) {
        return src + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x0);
    };
    for (int y = 0; y < std::min(radius, height); ++y) {
        const std::uint8_t* r = rowAt(y);
        for (std::size_t i = 0; i < cols; ++i)
            sums[i] += r[i];
    }
    for (int y = 0; y < height; ++y) {
        const int add = y + radius;
        const int drop = y - radius - 1;
        const std::uint8_t* added = add < height ? rowAt(add) : nullptr;
        const std::uint8_t* dropped = drop >= 0 ? rowAt(drop) : nullptr;
        std::uint8_t* out =
            dst + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x0);
        // A row entering the box equal to the one leaving it leaves the sums as they were, so
        // the output row repeats the one above: the common case inside a window's shape.
        const bool unchanged =
            (added == nullptr && dropped == nullptr) ||
            (added != nullptr && dropped != nullptr && std::memcmp(added, dropped, cols) == 0);
        if (unchanged && y > 0) {
            std::memcpy(out, out - stride, cols);
            continue;
        }
        if (added != nullptr)
            for (std::size_t i = 0; i < cols; ++i)
                sums[i] += added[i];
        if (dropped != nullptr)
            for (std::size_t i = 0; i < cols; ++i)
                sums[i] -= dropped[i];
        for (std::size_t i = 0; i < cols; ++i)
            out[i] = static_cast<std::uint8_t>(std::min(255u, (sums[i] * mul + kHalf) >> 16));
    }
}

// Runs job(part) for parts 0…n-1, the first on the calling thread.
template <typename Job>
void inParallel(int n, const Job& job) {
    std::vector<std::thread> workers;
    for (int part = 1; part < n; ++part)
        workers.emplace_back([&job, part] { job(part); });
    job(0);
    for (auto& w : workers)
        w.join();
}

}  // namespace

int ShadowBlur::spread(double sigma) {
    int total = 0;
    for (int r : boxRadii(sigma))
        total += r;
    return total;
}

void ShadowBlur::blur(std::uint8_t* mask, int width, int height, std::size_t stride, double sigma,
                      int threads) {
    if (mask == nullptr || width <= 0 || height <= 0)
        return;
    const auto radii = boxRadii(sigma);
    if (radii[0] == 0 && radii[1] == 0 && radii[2] == 0)
        return;
    // Small masks aren't worth a thread.
    const int parts =
        (static_cast<long long>(width) * height < 65536) ? 1 : std::clamp(threads, 1, 8);

    inParallel(parts, [&](int part) {
        std::vector<std::uint8_t> scratch;
        // Rows equal before blurring are equal after: blur one, copy it to its repeats.
        std::vector<std::uint8_t> previous;
        const auto w = static_cast<std::size_t>(width);
        for (int y = height * part / parts; y < height * (part + 1) / parts; ++y) {
            std::uint8_t* row = mask + static_cast<std::size_t>(y) * stride;
            if (!previous.empty() && std::memcmp(row, previous.data(), w) == 0) {
                std::memcpy(row, row - stride, w);
                continue;
            }
            previous.assign(row, row + w);
            for (int r : radii)
                boxRow(row, width, r, scratch);
        }
    });

    std::vector<std::uint8_t> other(stride * static_cast<std::size_t>(height));
    inParallel(parts, [&](int part) {
        const int x0 = width * part / parts;
        const int x1 = width * (part + 1) / parts;
        boxColumns(mask, other.data(), height, stride, x0, x1, radii[0]);
        boxColumns(other.data(), mask, height, stride, x0, x1, radii[1]);
        boxColumns(mask, other.data(), height, stride, x0, x1, radii[2]);
        for (int y = 0; y < height; ++y) {
            const std::size_t at =
                static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x0);
            std::memcpy(mask + at, other.data() + at, static_cast<std::size_t>(x1 - x0));
        }
    });
}

}  // namespace zd
