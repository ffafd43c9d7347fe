#include <gtest/gtest.h>

#include "support/ImageGraph.h"

using foundation::PropertyDictionary;
using runtime::Image;
using support::at;
using support::colorValue;
using support::GraphBuilder;
using support::Rgba;
using support::text;

namespace {

struct KernelResult {
  Image image;
  QStringList findings;
};

/// Runs a kernel; a parameter "image" gets a red rectangle (2, 1, 4 × 2) with alpha one half.
KernelResult run(const char* source, const PropertyDictionary& inputs = {},
                 const PropertyDictionary& state = {}) {
  GraphBuilder g;
  PropertyDictionary whole = state;
  whole.insert(text("sourceCode"), text(source));
  const QString color = g.node(text("QCImageFilter:CIConstantColorGenerator"), {},
                               {{text("inputColor"), colorValue(1, 0, 0, 0.5)}});
  const QString crop = g.node(text("QCImageCrop"), {},
                              {{text("inputRectangle_X"), 2.0},
                               {text("inputRectangle_Y"), 1.0},
                               {text("inputRectangle_Z"), 4.0},
                               {text("inputRectangle_W"), 2.0}});
  const QString node = g.node(text("QCImageKernel"), whole, inputs);
  g.connect(color, text("outputImage"), crop, text("inputImage"));
  if (text(source).contains(text("sampler image")))
    g.connect(crop, text("outputImage"), node, text("image"));
  g.publishOutput(node, text("outputImage"), text("result"));
  const auto renderer = g.renderer();
  (void)renderer->renderAtTime(0, QSize(10, 10));
  return {renderer->valueForOutputKey(text("result")).toImage(), renderer->findings()};
}

Rgba pixel(const char* source, int x = 0, int y = 0) {
  const KernelResult result = run(source);
  EXPECT_TRUE(result.findings.isEmpty()) << result.findings.join(u' ').toStdString();
  return at(result.image, x, y);
}

}  // namespace

TEST(ImageKernel, MultipliesAnImageByAColourWhereTheImageIs) {
  const KernelResult result =
      run("/* tint */ kernel vec4 tint(sampler image, __color c)\n"
          "{ return sample(image, samplerCoord(image)) * c; }",
          {{text("c"), colorValue(0.5, 1, 1, 0.5)}});
  EXPECT_EQ(result.image.extent(), QRect(2, 1, 4, 2));
  EXPECT_EQ(at(result.image, 2, 1), (Rgba{32, 0, 0, 64}));  // .5 · (.5 · .5), .5 · .5
}

TEST(ImageKernel, WithoutImagesItIsEndlessAndKnowsTheCentresOfPixels) {
  const KernelResult result =
      run("kernel vec4 k(vec2 size) { vec2 p = destCoord() / size; return vec4(p, 0., 1.); }",
          {{text("size_X"), 10.0}, {text("size_Y"), 100.0}});
  EXPECT_TRUE(result.image.isInfinite());
  EXPECT_EQ(at(result.image, 4, 49), (Rgba{115, 126, 0, 255}));
}

TEST(ImageKernel, LanguageFollowsItsArithmetic) {
  // Whole numbers divide without remainder, ++ before and after, loops, functions, choices.
  EXPECT_EQ(pixel("kernel vec4 k() { int r = 5; return vec4(float(-r/2) / -10.0); }")[0], 51);
  EXPECT_EQ(
      pixel("kernel vec4 k() { float s = 0.; int i;\n"
            " for (i = 0; i < 10; i++) { if (i == 3) continue; if (i > 6) break; s += 0.1; }\n"
            " return vec4(s); }")[3],
      153);
  EXPECT_EQ(pixel("float twice(float v) { return v * 2.0; }\n"
                  "kernel vec4 k() { return vec4(twice(0.2), twice(.1), 0, 1); }"),
            (Rgba{102, 51, 0, 255}));
  EXPECT_EQ(pixel("kernel vec4 k() { vec4 c = vec4(0.2, 0.4, 0.6, 1.0); c.rg = c.bb; c.b = 0.0;"
                  " return c.x > 0.5 ? c : vec4(1.0); }"),
            (Rgba{153, 153, 0, 255}));
  EXPECT_EQ(pixel("const float half = 0.5;\n"
                  "kernel vec4 k() { int a = 1; int b = a++ + ++a;\n"
                  " return vec4(b == 4 && a == 3 ? half : 0.0); }")[0],
            128);
  EXPECT_EQ(pixel("kernel vec4 k() { return vec4(mix(0.0, clamp(3.0, 0.0, 1.0), 0.2),"
                  " smoothstep(0.0, 1.0, 0.5), mod(5.5, 2.0) / 3.0, step(0.5, 0.6)); }"),
            (Rgba{51, 128, 128, 255}));
}

TEST(ImageKernel, SamplersKnowTheirPlace) {
  const KernelResult result =
      run("kernel vec4 k(sampler image) { vec2 s = samplerSize(image);\n"
          " vec4 e = samplerExtent(image); return vec4(s / 10.0, e.x / 10.0, 1.0); }");
  EXPECT_EQ(at(result.image, 2, 1), (Rgba{102, 51, 51, 255}));
  const char* beside =
      "kernel vec4 k(sampler image) { return sample(image, destCoord() + vec2(10.0, 0.0)); }";
  EXPECT_EQ(at(run(beside).image, 2, 1)[3], 0);
  EXPECT_EQ(at(run(beside, {{text("image-WrapMode"), 1}}, {{text("showSamplerOptions"), 1}}).image,
               2, 1)[3],
            128);
}

TEST(ImageKernel, BadProgramsAreReportedAndEndlessOnesEnd) {
  for (const char* source :
       {"", "kernel", "kernel vec4", "kernel vec4 k(", "kernel vec4 k() {", "vec4 k() { }",
        "kernel vec4 k() { return nothing; }", "kernel vec4 k() { return vec4(1.0) }",
        "kernel vec4 k() { 1.0 = 2.0; }", "kernel vec4 k() { return foo(1.0); }",
        "kernel vec4 k() { vec2 a; return a.q9; }"}) {
    const KernelResult result = run(source);
    EXPECT_TRUE(result.image.isNull()) << source;
    EXPECT_EQ(result.findings.size(), 1) << source;
  }
  EXPECT_TRUE(run("kernel vec4 k()\n{\n  return x;\n}").findings[0].contains(text("line 3")));
  EXPECT_EQ(pixel("kernel vec4 k() { while (true) { } return vec4(1.0); }"), (Rgba{0, 0, 0, 0}));
  const std::string deep = "kernel vec4 k() { return vec4(" + std::string(5000, '(') + "1.0" +
                           std::string(5000, ')') + "); }";
  EXPECT_EQ(run(deep.c_str()).findings.size(), 1);
}
