#include "Columns.h"
#include "FloatOperations.h"
#include "Int8Product.h"
#include "TestProgram.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

using namespace lucentra;

/// Each kernel that this processor can run.
class NetworkKernelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void productsAreExact_data()
    {
        const auto row = columns<int, int, int>("rows", "columns", "depth");
        row("one row, and a column more than a block", 1, 5, 32);
        row("whole blocks", 6, 8, 64);
        row("more rows than go together, and a rest of columns", 50, 7, 96);
        row("less than a vector", 2, 5, 31);
    }

    void productsAreExact()
    {
        const auto [rows, columns, depth] = fetched<int, int, int>();
        std::minstd_rand random(7);
        std::vector<std::int8_t> left(std::size_t(rows * depth));
        std::vector<std::int8_t> right(std::size_t(columns * depth));
        // Many are as large as they can be: sums of neighbours would overflow first there.
        for (auto &number : left)
            number = std::int8_t(random() % 3 == 0 ? 127 : int(random() % 255) - 127);
        for (auto &number : right)
            number = std::int8_t(random() % 3 == 0 ? -128 : int(random() % 256) - 128);
        const std::vector<float> scales(std::size_t(rows), 1.F);
        std::vector<std::uint32_t> order;
        for (int column = columns; column-- > 0;)
            order.push_back(std::uint32_t(column));
        for (const Int8Kernel &kernel : int8Kernels()) {
            std::vector<float> found(std::size_t(rows * columns));
            kernel.multiply({left.data(), rows, scales.data(), right.data(), order.data(), columns, depth, nullptr},
                            found.data());
            for (int row = 0; row < rows; ++row) {
                for (int column = 0; column < columns; ++column) {
                    int sum = 0;
                    for (int i = 0; i < depth; ++i)
                        sum +=
                            left[std::size_t(row * depth + i)] * right[std::size_t((columns - 1 - column) * depth + i)];
                    QVERIFY2(int(found[std::size_t(row * columns + column)]) == sum, kernel.name);
                }
            }
            const std::vector<float> numbers{0.5F, 1.5F, -0.5F, -2.5F, 126.6F, 300, -127.9F, -300};
            std::vector<float> many;
            for (int i = 0; i < 5; ++i)
                many.insert(many.end(), numbers.begin(), numbers.end());
            std::vector<std::int8_t> quantized(many.size());
            kernel.quantize(many.data(), int(many.size()), 1, quantized.data());
            for (std::size_t i = 0; i < many.size(); ++i)
                QCOMPARE(int(quantized[i]), (std::vector<int>{0, 2, 0, -2, 127, 127, -127, -127}[i % 8]));
        }
    }

    void floatsAreTheSameOnEveryProcessor()
    {
        constexpr int width = 90; // heads of two whole vectors and a rest
        constexpr int rows = 7;
        std::minstd_rand random(11);
        const auto numbers = [&random](int count) {
            std::vector<float> made(std::size_t(count), 0.F);
            for (float &number : made)
                number = float(int(random() % 2001) - 1000) / 70;
            return made;
        };
        const auto keys = numbers(rows * width);
        const auto values = numbers(rows * width);
        const auto first = numbers(width);
        const auto second = numbers(width);
        const auto third = numbers(width);
        std::vector<std::vector<float>> results;
        for (const FloatOperations &operations : floatOperations()) {
            std::vector<float> normalized = first;
            operations.addAndNormalize(normalized.data(), second.data(), third.data(), first.data(), width);
            std::vector<float> weights(rows);
            std::vector<float> attended(width);
            operations.attend(third.data(), {keys.data(), values.data(), rows, width, 5}, weights.data(),
                              attended.data());
            std::vector<float> cell = first;
            std::vector<float> forget = second;
            operations.advanceCell(cell.data(), forget.data(), third.data(), width);
            for (std::size_t i = 0; i < width; ++i) {
                const double kept = 1 / (1 + std::exp(-double(second[i])));
                QVERIFY(std::abs(kept * first[i] + (1 - kept) * third[i] - cell[i]) < 1e-5);
                QCOMPARE(forget[i], std::max(cell[i], 0.F));
            }
            auto &all = results.emplace_back(normalized);
            all.insert(all.end(), attended.begin(), attended.end());
            all.insert(all.end(), cell.begin(), cell.end());
            QVERIFY(all == results.front());
        }
    }
};

static const TestClass<NetworkKernelsTest> networkKernelsTest;
#include "NetworkKernelsTest.moc"
