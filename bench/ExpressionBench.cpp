// What the evaluation of an expression costs per node. The argument is the height of a full binary tree; "node" is the
// time per node, "nodes/s" its inverse.

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

#include "vornrun/algorithms/vornconstructor/VornExpressionConstructor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace {

using namespace vornrun;

/// Grows full trees with constants as leaves, from a fixed seed, and counts the nodes.
class Grower {
  public:
    std::size_t nodes() const { return mNodes; }

    template <class T>
    VornExpressionTree* leaf() {
        ++mNodes;
        // Sums and products of numbers around 1 stay finite at any height.
        return new TypedVornValue<T>(static_cast<typename T::AssociatedDataType>(mNumbers(mEngine)));
    }

    template <class Op>
    VornExpressionTree* node(VornExpressionTree* left, VornExpressionTree* right) {
        ++mNodes;
        return VornExpressionConstructor::expressionTree<Op>(left, right);
    }

    /// Alternates + and * level by level.
    template <class T>
    VornExpressionTree* arithmetic(long height) {
        if (height == 0) return leaf<T>();
        VornExpressionTree* const left = arithmetic<T>(height - 1);
        VornExpressionTree* const right = arithmetic<T>(height - 1);
        return height % 2 == 0 ? node<VornPlus>(left, right) : node<VornMultiply>(left, right);
    }

    /// One sum of reals against an integer per comparison, joined by `Join`.
    template <class Join>
    VornExpressionTree* comparisons(long height) {
        if (height == 0) return node<VornLEq>(node<VornPlus>(leaf<VornReal>(), leaf<VornReal>()), leaf<VornInt>());
        return node<Join>(comparisons<Join>(height - 1), comparisons<Join>(height - 1));
    }

    /// Every node is evaluated, as "iff" never stops early.
    VornExpressionTree* logic(long height) {
        if (height == 0) {
            ++mNodes;
            return new TypedVornValue<VornBool>(mNumbers(mEngine) > 1.0);
        }
        return node<VornIff>(logic(height - 1), logic(height - 1));
    }

  private:
    std::mt19937_64 mEngine{42};
    std::uniform_real_distribution<double> mNumbers{0.5, 1.5};
    std::size_t mNodes = 0;
};

template <class T>
void evaluateRepeatedly(benchmark::State& state, VornExpressionTree* adopted, std::size_t nodes) {
    const std::unique_ptr<VornExpressionTree> tree(adopted);
    const auto& typed = dynamic_cast<const TypedVornExpressionTree<T>&>(*tree);
    for (auto _ : state) benchmark::DoNotOptimize(typed.evaluateDirect());
    const double evaluated = static_cast<double>(state.iterations()) * static_cast<double>(nodes);
    state.counters["nodes/s"] = benchmark::Counter(evaluated, benchmark::Counter::kIsRate);
    state.counters["node"] = benchmark::Counter(evaluated, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

template <class T>
void BM_Arithmetic(benchmark::State& state) {
    Grower grower;
    VornExpressionTree* const tree = grower.arithmetic<T>(state.range(0));
    evaluateRepeatedly<T>(state, tree, grower.nodes());
}
BENCHMARK(BM_Arithmetic<VornReal>)->Arg(2)->Arg(6)->Arg(10);
BENCHMARK(BM_Arithmetic<VornInt>)->Arg(2)->Arg(6)->Arg(10);

void BM_Comparison(benchmark::State& state) {
    Grower grower;
    VornExpressionTree* const tree = grower.comparisons<VornIff>(state.range(0));
    evaluateRepeatedly<VornBool>(state, tree, grower.nodes());
}
BENCHMARK(BM_Comparison)->Arg(0)->Arg(4)->Arg(8);

void BM_Logic(benchmark::State& state) {
    Grower grower;
    VornExpressionTree* const tree = grower.logic(state.range(0));
    evaluateRepeatedly<VornBool>(state, tree, grower.nodes());
}
BENCHMARK(BM_Logic)->Arg(2)->Arg(6)->Arg(10);

/// A case whose branch has the type of the case, and one whose branch is converted through a box.
template <class Branch>
void BM_Case(benchmark::State& state) {
    auto* const condition = new TypedVornValue<VornBool>(true);
    const std::vector<CasePair> cases = {{condition, new TypedVornValue<Branch>(1)}};
    evaluateRepeatedly<VornReal>(state, new TypedCaseOperator<VornReal>(cases, new TypedVornValue<VornReal>(2)), 3);
}
BENCHMARK(BM_Case<VornReal>);
BENCHMARK(BM_Case<VornInt>);

}  // namespace
