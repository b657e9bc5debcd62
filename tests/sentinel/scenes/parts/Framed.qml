// The view lies left of the window, but its frame, taken in its own coordinates, is at (30, 60) in it.
Stage {
    Secret { parent: outside; x: 230; width: 100; height: 40 }
    Open { id: outside; x: -430; y: 60 }
}
