// Reading the physical inputs, reading and setting the outputs.
#include "support/host_test.h"

namespace quillon::test {
namespace {

// All six arguments and the status of one call, with values that show what was touched.
struct Image {
    short analog[4] = {-11, -12, -13, -14};
    unsigned char first = 0xE1;
    unsigned char second = 0xE2;
    long status = 4711;
};

constexpr long kNoEntry = static_cast<long>(0x80070002);
constexpr long kBadImage = static_cast<long>(0x80020005);

class InputsOutputs : public HostTest {
protected:
    Room& With(const char* image) {
        Json network = SmallNetwork();
        SetFile(DeviceOf(network, kLeft), "FFFD", image);
        Open(network);
        return AddRoom(kLeft);
    }
    using Member = HRESULT (STDMETHODCALLTYPE IDeviceEx::*)(short*, short*, short*, short*,
                                                            unsigned char*, unsigned char*, long*);
    static HRESULT Call(const Room& room, Member member, Image& image) {
        return (room.ex.Get()->*member)(&image.analog[0], &image.analog[1], &image.analog[2],
                                        &image.analog[3], &image.first, &image.second,
                                        &image.status);
    }
    static Image Read(const Room& room, Member member) {
        Image image;
        EXPECT_EQ(Call(room, member, image), S_OK);
        EXPECT_EQ(image.analog[1], -12);
        EXPECT_EQ(image.analog[2], -13);
        EXPECT_EQ(image.analog[3], -14);
        return image;
    }
    static Image Inputs(const Room& room) {
        const Image image = Read(room, &IDeviceEx::ReadInputs);
        EXPECT_EQ(image.second, 0xE2);
        return image;
    }
    static Image Outputs(const Room& room) {
        const Image image = Read(room, &IDeviceEx::ReadOutputs);
        EXPECT_EQ(image.analog[0], -11);
        return image;
    }
    static long Write(const Room& room, unsigned char first, unsigned char second) {
        Image image;
        image.first = first;
        image.second = second;
        EXPECT_EQ(Call(room, &IDeviceEx::WriteOutputs, image), S_OK);
        for (int place = 0; place < 4; ++place) EXPECT_EQ(image.analog[place], -11 - place);
        EXPECT_EQ(image.first, first);
        EXPECT_EQ(image.second, second);
        return image.status;
    }
};

TEST_F(InputsOutputs, InputsAreTheAnalogWordAndFourBits) {
    const Image image = Inputs(With("000001000100000101FF9C"));
    EXPECT_EQ(image.status, 0);
    EXPECT_EQ(image.analog[0], -100);
    EXPECT_EQ(image.first, 15);
    EXPECT_EQ(Changes(Host().Log()), Lines());
}

TEST_F(InputsOutputs, EachInputHasItsOwnBit) {
    EXPECT_EQ(Inputs(With("0000010000000000000064")).first, 1);
    EXPECT_EQ(Inputs(With("0000000001000000000064")).first, 2);
    EXPECT_EQ(Inputs(With("0000000000000001000064")).first, 4);
    EXPECT_EQ(Inputs(With("0000000000000000010064")).first, 8);
    EXPECT_EQ(Inputs(With("0000000000000000010064")).analog[0], 100);
}

TEST_F(InputsOutputs, InputPiecesAreReadAsDecimalNumbers) {
    EXPECT_EQ(Inputs(With("0000100000000000000000")).first, 10);
}

TEST_F(InputsOutputs, BadInputPieceFailsAfterTheAnalogValueIsSet) {
    const Image image = Inputs(With("000001000A00000101FF9C"));
    EXPECT_EQ(image.status, kBadImage);
    EXPECT_EQ(image.analog[0], -100);
    EXPECT_EQ(image.first, 0xE1) << "left as it was";
}

TEST_F(InputsOutputs, InputSumOverAByteFailsAfterTheAnalogValueIsSet) {
    const Image image = Inputs(With("0000990099000099990010"));
    EXPECT_EQ(image.status, kBadImage);
    EXPECT_EQ(image.analog[0], 16);
    EXPECT_EQ(image.first, 0xE1);
    EXPECT_EQ(Inputs(With("0000150000000000300000")).first, 255) << "the most that fits";
}

TEST_F(InputsOutputs, ShortInputImageSetsNothing) {
    const Image image = Inputs(With("000001000100000101FF"));
    EXPECT_EQ(image.status, kBadImage);
    EXPECT_EQ(image.analog[0], -11);
    EXPECT_EQ(image.first, 0xE1);
}

TEST_F(InputsOutputs, OutputsAreBytesFourAndFive) {
    const Image image = Outputs(With("0000000000A5"));
    EXPECT_EQ(image.status, 0);
    EXPECT_EQ(image.first, 0x00);
    EXPECT_EQ(image.second, 0xA5);
}

TEST_F(InputsOutputs, ShortOutputImageSetsNothing) {
    const Image image = Outputs(With("0000000000"));
    EXPECT_EQ(image.status, kBadImage);
    EXPECT_EQ(image.first, 0xE1);
    EXPECT_EQ(image.second, 0xE2);
}

TEST_F(InputsOutputs, WritingSetsTheTwoBytes) {
    EXPECT_EQ(Write(With("0000000000A5"), 0x01, 0x0F), 0);
    EXPECT_EQ(Changes(Host().Log()), Lines{L"IFile.ValueText.put(\"00000000010F\")"});
}

TEST_F(InputsOutputs, WritingWritesSixBytesWhateverTheEntryHeld) {
    EXPECT_EQ(Write(With("04FE01000100000101FF9C"), 0xAB, 0x00), 0);
    EXPECT_EQ(FileValue(kLeft, "FFFD"), L"04FE0100AB00");
}

TEST_F(InputsOutputs, WritingToAShortImageWritesNothing) {
    EXPECT_EQ(Write(With("0000000000"), 1, 2), kBadImage);
    EXPECT_EQ(Changes(Host().Log()), Lines());
}

TEST_F(InputsOutputs, MissingEntryIsAStatusAndNoFailure) {
    Json network = SmallNetwork();
    RemoveFile(DeviceOf(network, kLeft), "FFFD");
    Open(network);
    Room& room = AddRoom(kLeft);
    EXPECT_EQ(Inputs(room).status, kNoEntry);
    EXPECT_EQ(Outputs(room).status, kNoEntry);
    EXPECT_EQ(Write(room, 1, 2), kNoEntry);
    EXPECT_EQ(Changes(Host().Log()), Lines());
}

TEST_F(InputsOutputs, HostFailuresAreStatuses) {
    Room& room = With("000001000100000101FF9C");
    Host().FailAlways(L"IFile.ValueText.get");
    EXPECT_EQ(Inputs(room).status, kFault);
    EXPECT_EQ(Outputs(room).status, kFault);
    EXPECT_EQ(Write(room, 1, 2), kFault);
    Host().Restore();
    Host().FailAlways(L"IFile.ValueText.put");
    EXPECT_EQ(Write(room, 1, 2), kFault);
    com::Ptr<IErrorInfo> record;
    EXPECT_EQ(GetErrorInfo(0, record.Out()), S_FALSE) << "a success carries no record";
}

TEST_F(InputsOutputs, OddOrWrongDigitsSetNothing) {
    Room& room = With("000001000100000101FF9C");
    for (const wchar_t* text : {L"", L"0000000000A", L"0000000000G5", L"00000000 0A5", L"x"}) {
        SCOPED_TRACE(Narrow(text));
        Host().Answer(L"IFile.ValueText.get", std::wstring_view(text));
        EXPECT_EQ(Outputs(room).status, kBadImage);
        EXPECT_EQ(Outputs(room).first, 0xE1);
        EXPECT_EQ(Write(room, 1, 2), kBadImage);
        EXPECT_EQ(Inputs(room).analog[0], -11);
    }
    EXPECT_EQ(Changes(Host().Log()), Lines());
}

TEST_F(InputsOutputs, WithoutAPlaceForTheStatusNothingIsDone) {
    Room& room = With("0000000000A5");
    Host().Clear();
    Image image;
    for (const Member member :
         {&IDeviceEx::WriteOutputs, &IDeviceEx::ReadOutputs, &IDeviceEx::ReadInputs})
        EXPECT_EQ((room.ex.Get()->*member)(&image.analog[0], &image.analog[1], &image.analog[2],
                                           &image.analog[3], &image.first, &image.second, nullptr),
                  E_POINTER);
    EXPECT_EQ(Host().Log(), Lines());
    EXPECT_EQ(image.first, 0xE1);
}

TEST_F(InputsOutputs, MissingOutputBytesAreAStatusAndNothingIsWritten) {
    Room& room = With("0000000000A5");
    long status = 0;
    EXPECT_EQ(room.ex->WriteOutputs(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &status),
              S_OK);
    EXPECT_EQ(status, E_POINTER);
    EXPECT_EQ(Changes(Host().Log()), Lines());
}

TEST_F(InputsOutputs, AllThreeWorkThroughDispatch) {
    Room& room = With("04FE01000100000101FF9C");
    short analog[4] = {};
    unsigned char first = 0x12;
    unsigned char second = 0x34;
    VARIANT arguments[6];
    for (int i = 0; i < 4; ++i) {
        arguments[5 - i].vt = VT_BYREF | VT_I2;
        arguments[5 - i].piVal = &analog[i];
    }
    arguments[1].vt = VT_BYREF | VT_UI1;
    arguments[1].pbVal = &first;
    arguments[0].vt = VT_BYREF | VT_UI1;
    arguments[0].pbVal = &second;
    DISPPARAMS params{arguments, nullptr, 6, 0};
    const DISPID writeOutputs = 21;
    const DISPID readInputs = 23;
    com::Variant status;
    EXPECT_EQ(room.ex->Invoke(readInputs, IID_NULL, 0, DISPATCH_METHOD, &params, status.Out(),
                              nullptr, nullptr),
              S_OK);
    EXPECT_EQ(status.AsNumber(), 0);
    EXPECT_EQ(analog[0], -100);
    EXPECT_EQ(first, 15);
    EXPECT_EQ(room.ex->Invoke(writeOutputs, IID_NULL, 0, DISPATCH_METHOD, &params, status.Out(),
                              nullptr, nullptr),
              S_OK);
    EXPECT_EQ(FileValue(kLeft, "FFFD"), L"04FE01000F34");
}

}  // namespace
}  // namespace quillon::test
