// A layer: a box that a transform carries to the screen.
import type { Matrix3, Matrix4Like } from './matrix.js';

/** A box on the screen; immutable. */
export class Layer {
  /**
   * @param box  in layer coordinates, its corner at (0, 0) unless given
   * @param matrix
   *   layer to screen: of the plane, or of space as a browser has it (the eye is where w is 0); with `toScreen`, layer to
   *   eye space, where the eye is at the origin and looks along +z
   * @param toScreen  eye space to screen
   */
  constructor(box: { x?: number; y?: number; width: number; height: number }, matrix: Matrix3 | Matrix4Like, toScreen?: Matrix4Like);

  /**
   * The outline, [x, y, x, y, …]: the corners in front of the near plane, in order, and the points where it cuts an edge.
   * Empty when all is behind, and for a degenerate matrix.
   */
  readonly points: Float64Array;
  /** Which of the four corners are behind the near plane. */
  readonly behind: readonly [boolean, boolean, boolean, boolean];
  /** Whether there is an outline. */
  readonly isVisible: boolean;

  /** Whether a point of the screen is in the outline or within a tolerance of it. */
  hits(x: number, y: number, tolerance?: number): boolean;
  /** The same for points [x, y, x, y, …]; 1 or 0 for each. */
  hitsAll(points: ArrayLike<number>, tolerance?: number): Uint8Array;
  /** The distance of a point from the nearest edge in front of the near plane; -1 when there is none. */
  distance(x: number, y: number): number;
  /** The same for points [x, y, x, y, …]. */
  distances(points: ArrayLike<number>): Float64Array;
}
