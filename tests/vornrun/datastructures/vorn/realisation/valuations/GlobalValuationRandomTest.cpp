// The store against a model of it that is plainly right: a map for each level, searched from the top down.

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun {
namespace {

template <class T>
class Model {
  public:
    void add(typename T::AssociatedDataType value) { mLevels[0].emplace(mLevels[0].size() + 1, value); }
    void push() { mLevels.emplace_back(); }
    void pop() { mLevels.pop_back(); }
    void set(ValueRef reference, typename T::AssociatedDataType value) {
        if (mLevels.size() == 1)
            mLevels[0][reference] = value;
        else
            mLevels.back().emplace(reference, value);
    }
    typename T::AssociatedDataType get(ValueRef reference) const {
        for (auto level = mLevels.rbegin(); level != mLevels.rend(); ++level)
            if (level->count(reference) != 0) return level->at(reference);
        throw std::out_of_range("no such slot");
    }
    std::size_t size() const { return mLevels[0].size(); }
    std::size_t depth() const { return mLevels.size(); }
    std::map<ValueRef, typename T::AssociatedDataType>& permanent() { return mLevels[0]; }

  private:
    std::vector<std::map<ValueRef, typename T::AssociatedDataType>> mLevels{1};
};

class TwoStores {
  public:
    explicit TwoStores(std::uint64_t seed) : mEngine(seed) {}

    void act() {
        switch (mEngine() % 10) {
            case 0:
                return add();
            case 1:
                return push();
            case 2:
                return pop();
            case 3:
                return snapshot();
            case 4:
                return revert();
            default:
                return write();
        }
    }

    void compare() const {
        for (ValueRef reference = 1; reference <= mInts.size(); ++reference) {
            ASSERT_EQ(mValuation.getValueDirect<VornInt>(reference), mInts.get(reference));
            ASSERT_EQ(mValuation.getValue<VornEnum>(reference).value(), mEnums.get(reference));
        }
        ASSERT_FALSE(mValuation.contains(VornDataTypeTag::VornInt, mInts.size() + 1));
    }

  private:
    long drawn() { return static_cast<long>(mEngine() % 1000); }
    void add() {
        const long value = drawn();
        mInts.add(value);
        mEnums.add(std::to_string(value));
        mValuation.addValue<VornInt>(nullptr, value);
        mValuation.addValue<VornEnum>(nullptr, std::to_string(value));
    }
    void push() {
        if (mInts.depth() == 6) return;
        mInts.push();
        mEnums.push();
        mValuation.pushTemporaryValuation();
    }
    void pop() {
        if (mInts.depth() == 1) return;
        mInts.pop();
        mEnums.pop();
        mValuation.popTemporaryValuation();
    }
    void write() {
        if (mInts.size() == 0) return;
        const ValueRef reference = 1 + mEngine() % mInts.size();
        const long value = drawn();
        mInts.set(reference, value);
        mEnums.set(reference, std::to_string(value));
        mValuation.setValue<VornInt>(reference, value);
        mValuation.setValue<VornEnum>(reference, std::to_string(value));
    }
    void snapshot() {
        mSnapshot.reset(mValuation.copyValues());
        mSnapshotOfInts = mInts.permanent();
        mSnapshotOfEnums = mEnums.permanent();
    }
    void revert() {
        // A shorter snapshot would leave writes in layers without a slot below them.
        if (!mSnapshot || mSnapshotOfInts.size() != mInts.size()) return;
        mValuation.revertTo(mSnapshot.get());
        mInts.permanent() = mSnapshotOfInts;
        mEnums.permanent() = mSnapshotOfEnums;
    }

    std::mt19937_64 mEngine;
    GlobalValuation mValuation;
    Model<VornInt> mInts;
    Model<VornEnum> mEnums;
    std::unique_ptr<DynamicValuesContainerPermanent> mSnapshot;
    std::map<ValueRef, long> mSnapshotOfInts;
    std::map<ValueRef, std::string> mSnapshotOfEnums;
};

TEST(GlobalValuationLaws, AgreesWithAMapForEachLevel) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TwoStores stores(seed);
        for (int action = 0; action < 200; ++action) {
            stores.act();
            ASSERT_NO_FATAL_FAILURE(stores.compare()) << "after action " << action;
        }
    }
}

}  // namespace
}  // namespace vornrun
