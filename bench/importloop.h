#pragma once

#include "base/scriptedprompt.h"
#include "file/qosreader.h"
#include "file/qoswriter.h"
#include "model/document.h"

#include <benchmark/benchmark.h>

#include <memory>

// Reads the bytes into a fresh document in every iteration, and writes the document back when
// asked; taking the document apart is not timed.
inline void ImportLoop(benchmark::State& state, const QByteArray& bytes, bool writeBack)
{
    for (auto _ : state) {
        ScriptedPrompt prompt;
        auto doc = std::make_unique<Document>(&prompt);
        ImportQoSBytes(*doc, bytes);
        if (writeBack)
            benchmark::DoNotOptimize(ExportQoSBytes(*doc));
        benchmark::DoNotOptimize(doc.get());
        state.PauseTiming();
        doc.reset();
        state.ResumeTiming();
    }
}
