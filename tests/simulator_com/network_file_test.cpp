#include <sstream>
#include <vector>

#include "host_fixture.h"

namespace {

class NetworkFile : public Host {
public:
    // What is said of the small network with one piece of its text replaced.
    std::wstring Complaint(const std::string& piece, const std::string& other) const {
        std::string text = SmallNetwork();
        const std::size_t place = text.find(piece);
        EXPECT_NE(place, std::string::npos) << piece;
        text.replace(place, piece.size(), other);
        return ComplaintAbout(text);
    }
    std::wstring ComplaintAbout(const std::string& text) const {
        WriteFileText(folder.File(L"bad.json"), text);
        Ptr<INetwork> opened;
        const HRESULT result =
            control->OpenNetwork(Bstr(folder.File(L"bad.json")).Get(), opened.Out());
        EXPECT_FALSE(opened);
        return result == kBadNetworkFile ? ErrorText() : L"another result";
    }
};

TEST_F(NetworkFile, NetworkTellsItsNameAndDevices) {
    EXPECT_EQ(TextOf(network, &INetwork::get_Name), L"Small");
    Bstr lines;
    ASSERT_EQ(control->Neurons(network.Get(), lines.Out()), S_OK);
    EXPECT_EQ(lines.View(), L"0123456789AB\n0123456789AC\n0123456789AD\n0123456789AE\n");
}

TEST_F(NetworkFile, ComplaintsNameThePlace) {
    EXPECT_EQ(Complaint(R"("model": 7)", R"("modle": 7)"),
              L"Quorvex: devices[0]: unknown key \"modle\"");
    EXPECT_EQ(Complaint(R"("model": 7)", R"("model": "7")"),
              L"Quorvex: devices[0].model: must be a whole number");
    EXPECT_EQ(Complaint(R"("model": 7)", R"("model": 256)"),
              L"Quorvex: devices[0].model: must be 0 to 255");
    EXPECT_EQ(Complaint(R"("model": 7)", R"("model": 18446744073709551615)"),
              L"Quorvex: devices[0].model: must be 0 to 255");
    EXPECT_EQ(Complaint(R"("raw": "0A28")", R"("raw": "0A2800")"),
              L"Quorvex: devices[0].nvs[1].raw: 3 bytes, but the type has 2");
    EXPECT_EQ(Complaint(R"("raw": "0A28")", R"("raw": "0A2")"),
              L"Quorvex: devices[0].nvs[1].raw: must be hexadecimal, two digits a byte");
    EXPECT_EQ(Complaint(R"("type": "SNVT_switch")", R"("type": "SNVT_swich")"),
              L"Quorvex: devices[0].nvs[2].type: no such type \"SNVT_swich\"");
    EXPECT_EQ(Complaint(R"("index": 12)", R"("index": 3)"),
              L"Quorvex: devices[0].nvs[2].index: stands twice");
    EXPECT_EQ(Complaint(R"("min": "10.00")", R"("min": "cold")"),
              L"Quorvex: devices[0].nvs[0].min: is no value of the type");
    EXPECT_EQ(Complaint(R"("neuron": "0123456789AC")", R"("neuron": "0123456789ab")"),
              L"Quorvex: devices[1].neuron: stands twice");
    EXPECT_EQ(Complaint(R"("neuron": "0123456789AC")", R"("neuron": "0123")"),
              L"Quorvex: devices[1].neuron: must be 12 hexadecimal digits");
    EXPECT_EQ(Complaint(R"("id": "FFFD")", R"("id": "fffa")"),
              L"Quorvex: devices[0].files[1].id: stands twice");
    EXPECT_EQ(Complaint(R"("state": "03")", R"("state": "3")"),
              L"Quorvex: devices[3].state: must be 2 hexadecimal digits");
    EXPECT_EQ(Complaint(R"("output": true, "config": false)", R"("output": 1, "config": false)"),
              L"Quorvex: devices[0].nvs[1].output: must be true or false");
    EXPECT_EQ(Complaint(R"("output": true, "config": false)", R"("output": true, "config": true)"),
              L"Quorvex: devices[0].nvs[1].config: an output cannot be a configuration value");
    EXPECT_EQ(Complaint(R"("name": "Small", )", ""), L"Quorvex: document: key \"name\" is missing");
    EXPECT_EQ(Complaint(R"("name": "Small")", R"("name": "Small", "name": "Big")"),
              L"Quorvex: key \"name\" stands twice");
}

TEST_F(NetworkFile, WhatIsNoNetworkIsRefused) {
    EXPECT_NE(ComplaintAbout(""), L"another result");
    EXPECT_NE(ComplaintAbout("{"), L"another result");
    EXPECT_NE(ComplaintAbout("\xFF\xFE{}"), L"another result");
    EXPECT_EQ(ComplaintAbout("[]"), L"Quorvex: document: must be an object");
    EXPECT_EQ(ComplaintAbout(R"({"name": "x", "devices": {}})"),
              L"Quorvex: devices: must be an array");
    EXPECT_EQ(ComplaintAbout(R"({"name": "x", "devices": [7]})"),
              L"Quorvex: devices[0]: must be an object");
    Ptr<INetwork> opened;
    EXPECT_EQ(control->OpenNetwork(Bstr(folder.File(L"none.json")).Get(), opened.Out()),
              kBadNetworkFile);
}

TEST_F(NetworkFile, SavedNetworkReadsBackWithItsChanges) {
    const auto device = Bound(kFirst);
    LatePut(Variable(device, L"0"), host::point::kValue, L"25.50");
    device->put_Name(Bstr(L"R\u00E4um \"1\"").Get());
    Entry(device, 1)->put_ValueText(Bstr(L"00070000").Get());
    VARIANT_BOOL done;
    device->GoSoftOffLine(&done);
    const std::wstring path = folder.File(L"saved.json");
    ASSERT_EQ(control->SaveNetwork(network.Get(), Bstr(path).Get()), S_OK);
    const std::string once = ReadFileText(path);

    network = Open(path);
    const auto again = Bound(kFirst);
    EXPECT_EQ(Late(Variable(again, L"0"), host::point::kValue), L"25.50");
    EXPECT_EQ(TextOf(again, &IDevice::get_Name), L"R\u00E4um \"1\"");
    EXPECT_EQ(EntryText(again, 1), L"00070000");
    EXPECT_EQ(TextOf(again, &IDevice::get_State), L"0C");
    ASSERT_EQ(control->SaveNetwork(network.Get(), Bstr(path).Get()), S_OK);
    EXPECT_EQ(ReadFileText(path), once);
}

TEST_F(NetworkFile, FailedSaveLeavesTheOldFileWhole) {
    const std::wstring path = folder.File(L"held.json");
    WriteFileText(path, "old");
    const HANDLE held =
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(control->SaveNetwork(network.Get(), Bstr(path).Get()), kBadNetworkFile);
    CloseHandle(held);
    EXPECT_EQ(ReadFileText(path), "old");
    EXPECT_EQ(GetFileAttributesW((path + L".new").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(control->SaveNetwork(network.Get(), Bstr(folder.File(L"no\\such.json")).Get()),
              kBadNetworkFile);
}

TEST_F(NetworkFile, SaveThatCannotBeWrittenBesideNeverTouchesTheOldFile) {
    const std::wstring path = folder.File(L"old.json");
    WriteFileText(path, "old");
    ASSERT_TRUE(CreateDirectoryW((path + L".new").c_str(), nullptr));
    EXPECT_EQ(control->SaveNetwork(network.Get(), Bstr(path).Get()), kBadNetworkFile);
    EXPECT_EQ(ReadFileText(path), "old");
}

TEST_F(NetworkFile, ExportWritesOneDevice) {
    const std::wstring path = folder.File(L"device.json");
    ASSERT_EQ(Bound(kFirst)->Export(Bstr(path).Get()), S_OK);
    const std::string text = ReadFileText(path);
    EXPECT_THAT(text, testing::HasSubstr("\"neuron\": \"0123456789AB\""));
    EXPECT_THAT(text, testing::HasSubstr("nciLocation"));
}

// Every device of the two networks that come with the project, as a host sees it.
class ProjectNetwork : public Host, public testing::WithParamInterface<const wchar_t*> {
public:
    void SetUp() override {
        Host::SetUp();
        network = Open(std::wstring(QUORVEX_NETWORKS) + GetParam());
        ASSERT_EQ(control->put_Recording(VARIANT_FALSE), S_OK);
    }
    std::vector<Ptr<IDevice>> Devices() const {
        Bstr lines;
        com::Check(control->Neurons(network.Get(), lines.Out()));
        std::vector<Ptr<IDevice>> devices;
        std::wistringstream list(lines.Text());
        for (std::wstring neuron; std::getline(list, neuron);)
            devices.push_back(Bound(neuron.c_str()));
        return devices;
    }
    static bool Answers(const Ptr<IDevice>& device) {
        return !TextOf(device, &IDevice::get_State).empty();
    }
    static void ForEach(const Ptr<IDispatch>& points,
                        const std::function<void(const Ptr<IDispatch>&)>& visit) {
        const auto enumerator = com::Enumerate(points.Get());
        Variant item;
        while (enumerator->Next(1, item.Out(), nullptr) == S_OK) visit(item.AsObject());
    }
};

TEST_P(ProjectNetwork, EveryPointTakesItsOwnTexts) {
    int written = 0;
    const auto check = [&](const Ptr<IDispatch>& point) {
        const std::wstring raw = Late(point, host::point::kRawValue);
        const std::wstring name = Late(point, host::point::kName);
        if (com::Get(point.Get(), host::point::kDirection).AsNumber() == host::point::kOutput)
            return;
        for (const wchar_t* form :
             {host::point::kRawValue, host::point::kValue, host::point::kFormattedValue}) {
            const std::wstring text = Late(point, form);
            EXPECT_EQ(LatePut(point, form, text.c_str()), S_OK) << name << L" " << text;
            EXPECT_EQ(Late(point, host::point::kRawValue), raw) << name << L" " << text;
            ++written;
        }
    };
    for (const auto& device : Devices()) {
        if (!Answers(device)) continue;
        Ptr<IDispatch> points;
        com::Check(device->get_NetworkVariables(points.Out()));
        ForEach(points, check);
        com::Check(device->get_ConfigProperties(points.Out()));
        ForEach(points, check);
    }
    EXPECT_GT(written, 20);
    EXPECT_EQ(Misuse(), L"");
}

TEST_P(ProjectNetwork, PropertyBlockHoldsThePropertiesInOrder) {
    int blocks = 0;
    for (const auto& device : Devices()) {
        if (!Answers(device)) continue;
        Ptr<IDispatch> points;
        com::Check(device->get_ConfigProperties(points.Out()));
        std::wstring joined;
        ForEach(points, [&](const Ptr<IDispatch>& point) {
            joined += Late(point, host::point::kRawValue);
        });
        Ptr<IFiles> entries;
        com::Check(device->get_Files(entries.Out()));
        for (long place = 1; place <= ValueOf<long>(entries, &IFiles::get_Count); ++place) {
            if (ValueOf<long>(Entry(device, place), &IFile::get_Identifier) != 1) continue;
            EXPECT_EQ(EntryText(device, place), joined) << TextOf(device, &IDevice::get_Name);
            ++blocks;
        }
    }
    EXPECT_GT(blocks, 0);
}

INSTANTIATE_TEST_SUITE_P(All, ProjectNetwork, testing::Values(L"room.json", L"small.json"));

}  // namespace
