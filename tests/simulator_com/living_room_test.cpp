#include <set>

#include "host_fixture.h"

namespace {

constexpr const wchar_t* kRoom101 = L"0123456789AB";
constexpr const wchar_t* kRoom105 = L"0123456789AF";  // absent in the file
constexpr const wchar_t* kRoom106 = L"0123456789B0";  // unconfigured
constexpr const wchar_t* kRoom201 = L"0223456789C0";

struct Panel {
    Bstr state;
    long status = -1, inputs = -1, counts = -1;
    VARIANT_BOOL fixed = VARIANT_FALSE, high = VARIANT_FALSE;
    double volts = 0, celsius = 0;
};

class LivingRoom : public Host {
public:
    void SetUp() override {
        Host::SetUp();
        network = Open(std::wstring(QUORVEX_NETWORKS) + L"room.json");
    }
    void Advance(long milliseconds) const {
        ASSERT_EQ(control->Advance(network.Get(), milliseconds), S_OK);
    }
    HRESULT Plug(const wchar_t* neuron, bool in) const {
        return control->Plug(network.Get(), Bstr(neuron).Get(), in ? VARIANT_TRUE : VARIANT_FALSE);
    }
    Panel Read(const wchar_t* neuron) const {
        Panel panel;
        com::Check(control->Room(network.Get(), Bstr(neuron).Get(), panel.state.Out(),
                                 &panel.status, &panel.inputs, &panel.counts, &panel.fixed,
                                 &panel.high, &panel.volts, &panel.celsius));
        return panel;
    }
    std::wstring Raw(const Ptr<IDevice>& device, const wchar_t* key) const {
        return Late(Variable(device, key), host::point::kRawValue);
    }
    // The raw texts of every point that an operator or the network sets.
    std::wstring Settings(const Ptr<IDevice>& device) const {
        std::wstring all;
        for (int i = 0; i < 60; ++i) {
            const auto point = Variable(device, std::to_wstring(i).c_str());
            if (!point || Late(point, host::point::kName).starts_with(L"nvo")) continue;
            all += Late(point, host::point::kRawValue) + L' ';
        }
        for (int i = 0; i < 43; ++i)
            all += Late(Property(device, std::to_wstring(i).c_str()), host::point::kRawValue);
        return all;
    }
    static std::wstring State(const Ptr<IDevice>& device) {
        return TextOf(device, &IDevice::get_State);
    }
};

TEST_F(LivingRoom, NothingMovesBeforeTimePasses) {
    const auto device = Bound(kRoom101);
    EXPECT_EQ(Raw(device, L"23"), L"08BB");
    Read(kRoom101);
    EXPECT_EQ(EntryText(device, 2), L"000001000100000101FF9C00");
}

TEST_F(LivingRoom, WhatIsMeasuredMovesAndWhatIsSetStays) {
    const auto device = Bound(kRoom101);
    ASSERT_EQ(LatePut(Variable(device, L"5"), host::point::kValue, L"26"), S_OK);
    const std::wstring settings = Settings(device);
    std::set<std::wstring> temperatures, counts;
    for (int i = 0; i < 40; ++i) {
        Advance(500);
        temperatures.insert(Raw(device, L"23"));
        counts.insert(EntryText(device, 2).substr(18, 4));
    }
    EXPECT_GT(temperatures.size(), 10U);
    EXPECT_GT(counts.size(), 2U);
    EXPECT_EQ(Settings(device), settings);
    EXPECT_EQ(Late(Variable(device, L"27"), host::point::kFormattedValue), L"HVAC_HEAT");
    Advance(600'000);
    EXPECT_NEAR(std::stod(Late(Variable(device, L"23"), host::point::kValue)), 25, 0.8);
    EXPECT_EQ(Late(Variable(device, L"24"), host::point::kValue), L"25.00");
    EXPECT_EQ(Settings(device), settings);
}

TEST_F(LivingRoom, OccupancyAndFanAnswerTheirCommands) {
    const auto device = Bound(kRoom101);
    ASSERT_EQ(LatePut(Variable(device, L"7"), host::point::kValue, L"1"), S_OK);
    ASSERT_EQ(LatePut(Variable(device, L"18"), host::point::kValue, L"45 1"), S_OK);
    Advance(30'000);
    EXPECT_EQ(Late(Variable(device, L"25"), host::point::kFormattedValue), L"OC_UNOCCUPIED");
    EXPECT_EQ(Late(Variable(device, L"28"), host::point::kValue), L"45.0 1");
    ASSERT_EQ(LatePut(Variable(device, L"18"), host::point::kValue, L"0 0"), S_OK);
    Advance(30'000);
    EXPECT_EQ(Late(Variable(device, L"28"), host::point::kValue), L"0.0 0");
}

TEST_F(LivingRoom, EveryValueStaysOneOfItsType) {
    Advance(3'600'000);
    for (const auto* neuron : {kRoom101, kRoom201}) {
        const auto device = Bound(neuron);
        for (int i = 0; i < 57; ++i)
            if (const auto point = Variable(device, std::to_wstring(i).c_str())) {
                EXPECT_NE(Late(point, host::point::kFormattedValue), L"") << i;
            }
    }
}

TEST_F(LivingRoom, SameTimeGivesTheSameNetwork) {
    const auto other = Open(std::wstring(QUORVEX_NETWORKS) + L"room.json");
    for (const auto& one : {network, other})
        for (int i = 0; i < 20; ++i) ASSERT_EQ(control->Advance(one.Get(), 700), S_OK);
    const auto first = folder.File(L"first.json"), second = folder.File(L"second.json");
    ASSERT_EQ(control->SaveNetwork(network.Get(), Bstr(first).Get()), S_OK);
    ASSERT_EQ(control->SaveNetwork(other.Get(), Bstr(second).Get()), S_OK);
    EXPECT_EQ(ReadFileText(first), ReadFileText(second));
}

TEST_F(LivingRoom, PluggedBackInIsTheStateBefore) {
    const auto device = Bound(kRoom101);
    VARIANT_BOOL done = VARIANT_FALSE;
    device->GoSoftOffLine(&done);
    ASSERT_EQ(Plug(kRoom101, false), S_OK);
    ASSERT_EQ(Plug(kRoom101, false), S_OK);
    EXPECT_EQ(State(device), L"");
    EXPECT_EQ(Raw(device, L"23"), L"?");
    Advance(5000);
    ASSERT_EQ(Plug(kRoom101, true), S_OK);
    EXPECT_EQ(State(device), L"0C");
    EXPECT_EQ(Raw(device, L"23"), L"08BB");
    ASSERT_EQ(Plug(kRoom105, true), S_OK);
    EXPECT_EQ(State(Bound(kRoom105)), L"04");
    ASSERT_EQ(Plug(kRoom106, false), S_OK);
    ASSERT_EQ(Plug(kRoom106, true), S_OK);
    EXPECT_EQ(State(Bound(kRoom106)), L"02");
}

TEST_F(LivingRoom, OffLineUnitReportsNothingNewButMeasures) {
    const auto device = Bound(kRoom101);
    VARIANT_BOOL done = VARIANT_FALSE;
    device->GoHardOffLine(&done);
    Advance(60'000);
    EXPECT_EQ(Raw(device, L"23"), L"08BB");
    EXPECT_NE(EntryText(device, 2).substr(18, 4), L"FF9C");
    EXPECT_NE(Read(kRoom101).celsius, 22.35);
}

TEST_F(LivingRoom, InputsStatusAndCountsStandInTheImage) {
    const auto device = Bound(kRoom101);
    const Bstr neuron(kRoom101);
    for (long i = 0; i < 4; ++i)
        ASSERT_EQ(control->SetInput(network.Get(), neuron.Get(), i, VARIANT_FALSE), S_OK);
    ASSERT_EQ(control->SetInput(network.Get(), neuron.Get(), 1, VARIANT_TRUE), S_OK);
    ASSERT_EQ(control->SetApplicationStatus(network.Get(), neuron.Get(), 0x2A), S_OK);
    ASSERT_EQ(control->SetAnalog(network.Get(), neuron.Get(), Variant(-100)), S_OK);
    Advance(1000);
    EXPECT_EQ(EntryText(device, 2), L"2A0000000100000000FF9C00");
    EXPECT_EQ(Raw(device, L"36").substr(0, 1), L"4");
    Panel panel = Read(kRoom101);
    EXPECT_EQ(panel.status, 0x2A);
    EXPECT_EQ(panel.inputs, 2);
    EXPECT_EQ(panel.counts, -100);
    EXPECT_EQ(panel.fixed, VARIANT_TRUE);
    ASSERT_EQ(control->SetAnalog(network.Get(), neuron.Get(), Variant()), S_OK);
    EXPECT_NEAR(Read(kRoom101).counts, 1753, 42);
    ASSERT_EQ(control->CalibrationSwitch(network.Get(), neuron.Get(), VARIANT_TRUE), S_OK);
    panel = Read(kRoom101);
    EXPECT_NEAR(panel.counts, 6819, 95);
    EXPECT_EQ(panel.high, VARIANT_TRUE);
    EXPECT_EQ(panel.volts, 9.3);
}

TEST_F(LivingRoom, ImageThatOutputsWereWrittenToIsCompleted) {
    const auto device = Bound(kRoom101);
    ASSERT_EQ(Entry(device, 2)->put_ValueText(Bstr(L"000000000100").Get()), S_OK);
    EXPECT_EQ(Read(kRoom101).inputs, 2);
    EXPECT_EQ(EntryText(device, 2), L"000000000100");
    Advance(500);
    EXPECT_EQ(EntryText(device, 2).size(), 22U);
    EXPECT_EQ(EntryText(device, 2).substr(0, 12), L"000000000100");
}

TEST_F(LivingRoom, TemperatureSetShowsAtOnceAndTheRoomGoesOnFromThere) {
    const auto device = Bound(kRoom101);
    ASSERT_EQ(control->RoomTemperature(network.Get(), Bstr(kRoom101).Get(), 28.5), S_OK);
    EXPECT_EQ(Late(Variable(device, L"23"), host::point::kValue), L"28.50");
    Advance(2000);
    EXPECT_EQ(Late(Variable(device, L"27"), host::point::kFormattedValue), L"HVAC_COOL");
    EXPECT_NEAR(Read(kRoom101).celsius, 28.5, 1);
}

TEST_F(LivingRoom, RefusesWhatIsOutOfRange) {
    const Bstr neuron(kRoom101);
    EXPECT_EQ(control->Advance(network.Get(), -1), E_INVALIDARG);
    EXPECT_EQ(control->Advance(network.Get(), 86'400'001), E_INVALIDARG);
    EXPECT_EQ(control->Advance(nullptr, 1), E_INVALIDARG);
    EXPECT_EQ(Plug(L"0123", true), E_INVALIDARG);
    EXPECT_EQ(ErrorText(), L"Quorvex: The network has no device \"0123\"");
    EXPECT_EQ(control->SetInput(network.Get(), neuron.Get(), 4, VARIANT_TRUE), E_INVALIDARG);
    EXPECT_EQ(control->SetInput(network.Get(), neuron.Get(), -1, VARIANT_TRUE), E_INVALIDARG);
    EXPECT_EQ(control->SetAnalog(network.Get(), neuron.Get(), Variant(40000)), E_INVALIDARG);
    EXPECT_EQ(control->SetAnalog(network.Get(), neuron.Get(), Variant(L"x")), E_INVALIDARG);
    EXPECT_EQ(control->RoomTemperature(network.Get(), neuron.Get(), 100.5), E_INVALIDARG);
    EXPECT_EQ(control->RoomTemperature(network.Get(), neuron.Get(), -51), E_INVALIDARG);
    const auto small = Open(folder.File(L"small.json"));
    EXPECT_EQ(control->SetInput(small.Get(), Bstr(kSecond).Get(), 0, VARIANT_TRUE), E_INVALIDARG);
    EXPECT_EQ(ErrorText(), L"Quorvex: Device 0123456789AC has no entry FFFD");
    EXPECT_EQ(control->Advance(small.Get(), 5000), S_OK);
}

TEST_F(LivingRoom, SteeringTheRoomsIsNoCallOfTheHost) {
    ASSERT_EQ(control->Clear(), S_OK);
    Advance(1000);
    Plug(kRoom101, false);
    Read(kRoom101);
    EXPECT_EQ(Log(), L"");
    EXPECT_EQ(TextOf(control, &ISimulator::get_Counts), L"");
}

TEST_F(LivingRoom, LogIsReadFromACallOnAndCountsAreListed) {
    ASSERT_EQ(control->Clear(), S_OK);
    const auto device = Bound(kRoom101);
    EXPECT_EQ(ValueOf<long>(control, &ISimulator::get_Logged), 2);
    State(device);
    Bstr lines;
    ASSERT_EQ(control->LogFrom(2, lines.Out()), S_OK);
    EXPECT_EQ(lines.View(), L"IDevice.State.get()\n");
    ASSERT_EQ(control->LogFrom(3, lines.Out()), S_OK);
    EXPECT_EQ(lines.View(), L"");
    ASSERT_EQ(control->LogFrom(-7, lines.Out()), S_OK);
    EXPECT_EQ(lines.View(), Log());
    EXPECT_EQ(TextOf(control, &ISimulator::get_Counts),
              L"1 IDevice.Network.put\n1 IDevice.NeuronID.put\n1 IDevice.State.get\n");
}

}  // namespace
