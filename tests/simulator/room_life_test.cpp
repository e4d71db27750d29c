#include "room_life.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace quorvex {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr std::uint32_t kSeed = 77;

RoomReadings After(RoomLife& life, const RoomOrders& orders, milliseconds time) {
    return life.Advance(orders, time);
}

TEST(RoomLife, SameSeedOrdersAndStepsGiveTheSameReadings) {
    RoomLife one(kSeed, 18), two(kSeed, 18), other(kSeed + 2, 18);
    bool differs = false;
    for (int i = 0; i < 200; ++i) {
        const auto a = one.Advance({}, milliseconds(500));
        const auto b = two.Advance({}, milliseconds(500));
        EXPECT_EQ(a.temperature, b.temperature);
        EXPECT_EQ(a.carbonDioxide, b.carbonDioxide);
        differs |= a.temperature != other.Advance({}, milliseconds(500)).temperature;
    }
    EXPECT_TRUE(differs);
}

TEST(RoomLife, HeatsAColdRoomToItsSetPointAndHoldsIt) {
    RoomLife life(kSeed, 15);
    const auto begin = After(life, {}, seconds(10));
    EXPECT_EQ(begin.mode, HvacMode::kHeat);
    EXPECT_GT(begin.heat, 80);
    EXPECT_EQ(begin.cool, 0);
    EXPECT_GT(begin.discharge, begin.temperature + 5);
    EXPECT_EQ(begin.setpoint, 21);
    const auto end = After(life, {}, minutes(10));
    EXPECT_NEAR(end.temperature, 21, 0.6);
    EXPECT_LT(end.heat, 60);
}

TEST(RoomLife, CoolsAWarmRoomToItsSetPoint) {
    RoomLife life(kSeed, 30);
    RoomOrders orders;
    orders.outdoor = 32;
    const auto begin = After(life, orders, seconds(10));
    EXPECT_EQ(begin.mode, HvacMode::kCool);
    EXPECT_GT(begin.cool, 80);
    EXPECT_LT(begin.discharge, begin.temperature - 3);
    EXPECT_NEAR(After(life, orders, minutes(10)).temperature, 23, 0.8);
}

TEST(RoomLife, RemoteSetPointMovesTheBand) {
    RoomLife life(kSeed, 20);
    RoomOrders orders;
    orders.setpoint = 25;
    orders.setpointOffset = 0.5;
    const auto readings = After(life, orders, minutes(10));
    EXPECT_EQ(readings.setpoint, 24.5);
    EXPECT_NEAR(readings.temperature, 24.5, 0.6);
}

TEST(RoomLife, OpenWindowOrOffMeansNeitherHeatNorFan) {
    for (const bool window : {false, true}) {
        RoomLife life(kSeed, 18);
        After(life, {}, seconds(30));
        const double warm = life.Temperature();
        RoomOrders orders;
        orders.holdOff = window;
        if (!window) orders.mode = HvacMode::kOff;
        const auto readings = After(life, orders, minutes(2));
        EXPECT_EQ(readings.mode, HvacMode::kOff);
        EXPECT_LT(readings.heat, 0.1);
        EXPECT_LT(readings.fan, 0.1);
        EXPECT_LT(life.Temperature(), warm - 0.5);
    }
}

TEST(RoomLife, FanObeysItsCommandAndItsLimit) {
    RoomLife life(kSeed, 15);
    RoomOrders orders;
    orders.fanMaximum = 80;
    EXPECT_NEAR(After(life, orders, seconds(20)).fan, 80, 0.1);
    orders.fan = 30;
    EXPECT_NEAR(After(life, orders, seconds(20)).fan, 30, 0.1);
    orders.fan = 0;
    EXPECT_NEAR(After(life, orders, seconds(20)).fan, 0, 0.1);
    EXPECT_FALSE(After(life, orders, seconds(20)).fanStarted);
    orders.fan = 50;
    EXPECT_TRUE(After(life, orders, seconds(20)).fanStarted);
}

TEST(RoomLife, RemoteSensorReplacesTheOwnOne) {
    RoomLife life(kSeed, 15);
    RoomOrders orders;
    orders.remoteSensor = 27.5;
    const auto readings = After(life, orders, seconds(10));
    EXPECT_EQ(readings.temperature, 27.5);
    EXPECT_EQ(readings.mode, HvacMode::kCool);
}

TEST(RoomLife, NoTimeLeavesTheRoomAsItIs) {
    RoomLife life(kSeed, 18);
    After(life, {}, milliseconds(0));
    After(life, {}, milliseconds(-5000));
    EXPECT_EQ(life.Temperature(), 18);
}

TEST(RoomLife, RestingRoomGoesTowardTheOutdoors) {
    RoomLife life(kSeed, 22);
    life.Rest(-5, minutes(5));
    EXPECT_LT(life.Temperature(), 18);
}

TEST(RoomLife, LongTimeAndWildOrdersStayFinite) {
    RoomLife life(kSeed, 100);
    RoomOrders orders;
    orders.setpoint = 327.66;
    orders.outdoor = -273;
    orders.fan = 1e9;
    const auto readings = After(life, orders, std::chrono::hours(24));
    EXPECT_TRUE(std::isfinite(readings.temperature));
    EXPECT_NEAR(readings.fan, 100, 0.1);
    EXPECT_EQ(readings.heat <= 100, true);
}

TEST(EffectiveOccupancy, CommandBeforeSensorBeforeOccupied) {
    RoomOrders orders;
    EXPECT_EQ(EffectiveOccupancy(orders), Occupancy::kOccupied);
    orders.sensor = Occupancy::kUnoccupied;
    EXPECT_EQ(EffectiveOccupancy(orders), Occupancy::kUnoccupied);
    orders.command = Occupancy::kStandby;
    EXPECT_EQ(EffectiveOccupancy(orders), Occupancy::kStandby);
}

TEST(EffectiveBand, UnoccupiedIgnoresTheRemoteSetPoint) {
    RoomOrders orders;
    orders.setpoint = 30;
    EXPECT_EQ(EffectiveBand(orders, Occupancy::kUnoccupied).heat, 16);
    EXPECT_EQ(EffectiveBand(orders, Occupancy::kStandby).cool, 33);
    EXPECT_EQ(EffectiveBand(orders, Occupancy::kBypass).heat, 29);
}

TEST(EffectiveBand, EdgesInTheWrongOrderMeetInTheMiddle) {
    RoomOrders orders;
    orders.occupied = {25, 21};
    const Band band = EffectiveBand(orders, Occupancy::kOccupied);
    EXPECT_EQ(band.heat, 23);
    EXPECT_EQ(band.cool, 23);
}

TEST(AnalogInput, CountsFlickerAroundTheVoltageOfTheSwitch) {
    for (std::uint32_t seed = 1; seed < 200; ++seed) {
        AnalogInput analog(seed * 2654435761U);
        for (const bool high : {false, true}) {
            analog.high = high;
            int least = 32767, most = 0;
            for (int i = 0; i < 50; ++i) {
                const int counts = analog.Read();
                least = std::min(least, counts);
                most = std::max(most, counts);
            }
            EXPECT_NEAR((least + most) / 2.0, high ? 6819 : 1753, high ? 95 : 42);
            EXPECT_GT(most, least);
            EXPECT_LE(most - least, 6);
        }
        EXPECT_EQ(analog.Volts(), AnalogInput::kHighVolts);
    }
}

TEST(AnalogInput, FixedCountStays) {
    AnalogInput analog(kSeed);
    analog.fixed = -100;
    EXPECT_EQ(analog.Read(), -100);
    EXPECT_EQ(analog.Read(), -100);
    analog.fixed.reset();
    EXPECT_NEAR(analog.Read(), 1753, 42);
}

TEST(Noise, StaysWithinOneAndIsCentred) {
    Noise noise(0);
    double sum = 0;
    for (int i = 0; i < 20000; ++i) {
        const double value = noise.Next();
        EXPECT_LE(std::abs(value), 1);
        sum += value;
    }
    EXPECT_NEAR(sum / 20000, 0, 0.02);
}

}  // namespace
}  // namespace quorvex
