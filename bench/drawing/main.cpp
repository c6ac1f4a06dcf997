// Drawing against the toolkit's painter used plainly, and against Cairo: single primitives and a
// window's whole paint, on an image and in a paint event. The peers take turns in one process. Fails
// when our pixels are not those of the plain painter, or when a primitive asks for memory. With an
// argument: only the primitives whose names hold it.
#include <algorithm>
#include <cstdio>

#include <QtGui/QFontMetricsF>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>

#include "Drawer.h"
#include "allocations.h"
#include "harness.h"
#include "paintEvent.h"
#include "scenes.h"

namespace {

using namespace bench;

constexpr int kRounds = 15;

QImage Blank() {
    QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

struct Contestants {
    QImage images[4] = {Blank(), Blank(), Blank(), Blank()};
    std::unique_ptr<Drawer> ours = OursOn(images[0]);
    std::unique_ptr<Drawer> plain = PlainOn(images[1]);
    std::unique_ptr<Drawer> cairo = CairoOn(images[2]);
    std::unique_ptr<Drawer> careful = PlainOn(images[3], 1.0001);
};

Competitor Draws(const std::string& name, Drawer& drawer, const Scene& scene, int count) {
    return {name,
            [&drawer, &scene, count] { return NanosecondsPer(count, [&] { scene(drawer); }); }};
}

void Compare(Contestants& all, const std::string& name, const Scene& scene, int count,
             const std::string& unit) {
    ReportBest(name,
               CompareAll(kRounds, {Draws("ours", *all.ours, scene, count),
                                    Draws("QPainter", *all.plain, scene, count),
                                    Draws("Cairo", *all.cairo, scene, count)}),
               unit);
}

void ComparePrimitives(Contestants& all, const std::string& part) {
    for (const Primitive& primitive : Primitives())
        if (primitive.name.find(part) != std::string::npos)
            Compare(all, primitive.name, primitive.draw, primitive.count, "ns");
}

void CompareTextWidth(Contestants& all) {
    constexpr int kCount = 2000;
    static int s_sum = 0;
    const auto measure = [](Drawer& drawer) {
        for (int i = 0; i < kCount; ++i) s_sum += drawer.TextWidth(kText);
    };
    const Scene scene = measure;
    ReportBest("text-width-21-glyphs",
               CompareAll(kRounds, {Draws("ours", *all.ours, scene, kCount),
                                    Draws("QFontMetricsF", *all.plain, scene, kCount)}),
               "ns");
    ReportBest("text-width-21-glyphs-cairo",
               CompareAll(kRounds, {Draws("ours", *all.ours, scene, kCount),
                                    Draws("Cairo", *all.cairo, scene, kCount)}),
               "ns");
}

// Against the plain painter only: the ratio is what is promised.
void CompareWholePaint(Contestants& all) {
    const Scene scene = WholePaint(Texts::With);
    const auto figures = CompareAll(
        kRounds, {Draws("ours", *all.ours, scene, 1000), Draws("QPainter", *all.plain, scene, 1000),
                  Draws("Cairo", *all.cairo, scene, 1000),
                  Draws("QPainter, pens of 1.0001", *all.careful, scene, 1000)});
    ReportBest("paint-on-image", {figures[0], figures[1]}, "us");
    ReportBest("paint-on-image-careful", {figures[0], figures[3]}, "us");
    ReportBest("paint-on-image-cairo", {figures[0], figures[2]}, "us");
    const auto events = ComparePaintEvents(kRounds, scene);
    ReportBest("paint-event", {events[0], events[1]}, "us");
    ReportBest("paint-event-cairo", {events[0], events[2]}, "us");
}

int CountAllocations(Contestants& all) {
    int failures = 0;
    std::vector<Primitive> primitives = Primitives();
    primitives.push_back({"whole-paint", 3200, WholePaint(Texts::With)});
    for (const Primitive& primitive : primitives) {
        primitive.draw(*all.ours);
        const auto count = AllocationsIn([&] { primitive.draw(*all.ours); });
        Report("allocations-" + primitive.name, static_cast<double>(count) / primitive.count,
               "a call");
        failures += count != 0;
    }
    return failures;
}

int CheckPixels() {
    QImage ours = Blank();
    QImage plain = Blank();
    WholePaint(Texts::Without)(*OursOn(ours));
    WholePaint(Texts::Without)(*PlainOn(plain));
    long different = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) different += ours.pixel(x, y) != plain.pixel(x, y);
    Report("paint-different-pixels", static_cast<double>(different), "of 700000");
    return different != 0 || ours == Blank();
}

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
    QApplication application(argc, argv);
    Contestants all;
    ComparePrimitives(all, argc > 1 ? argv[1] : "");
    if (argc > 1) return 0;
    int failures = CheckPixels();
    CompareTextWidth(all);
    CompareWholePaint(all);
    failures += CountAllocations(all);
    if (failures) std::fprintf(stderr, "drawing: %d checks failed\n", failures);
    return failures ? 1 : 0;
}
